// SPDX-License-Identifier: GPL-3.0-or-later
// The shape of a crossfade: half a period of a raised cosine, which leaves and arrives without a corner.
//
//     weight(x) = 0.5 - 0.5 cos(pi x)      x from 0 (weight 0) to 1 (weight 1)
//
// The cosine is an even polynomial of degree 10, with the coefficients of the Handbook of Mathematical
// Functions (National Bureau of Standards, 1964), 4.3.99, shortened to single precision. It errs by at most
// 2e-8 up to pi / 2, for which it was made; up to pi, where it is used here, by at most 7.6e-4. A weight errs
// by half of that, and is clamped to 0 to 1.
//
// [any thread] Order and precision of each operation are part of the sound.
#pragma once

namespace RaisedCosine
{
constexpr int lanes = 4;
using Lanes = float __attribute__((vector_size(4 * lanes)));

// Four weights at once. The product with pi is made in double precision and rounded to single.
inline Lanes weights(Lanes x)
{
    using DoubleLanes = double __attribute__((vector_size(8 * lanes)));
    constexpr double pi = 3.141592653589793;
    const Lanes zero = {}, one = zero + 1.0f;
    const Lanes y = __builtin_convertvector(__builtin_convertvector(x, DoubleLanes) * pi, Lanes);
    const Lanes q = y * y;
    const Lanes cosine =
        ((((-2.605e-7f * q + 2.47609e-5f) * q - 0.0013888397f) * q + 0.04166664f) * q - 0.5f) * q + 1.0f;
    const Lanes weight = 0.5f - 0.5f * cosine;
    const Lanes capped = weight > one ? one : weight;
    return capped > zero ? capped : zero;
}
}
