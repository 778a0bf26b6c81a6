// SPDX-License-Identifier: GPL-3.0-or-later
// The bend of a segment that moves early: 1 - (1 - x)^(1 - c) for a negative curve c, as pow gives it, at
// a fraction of its cost.
//
// Along a segment the base 1 - x moves by tiny steps. One call of pow serves a stretch of it: within
// that, a power near a centre u0 is u0^e times the binomial series of (1 + t)^e. The series is right to
// about 2^-50, and the result is needed to 2^-24; where the two roundings of what it might be differ, pow
// decides. So the result is always pow's, to the last bit.
#pragma once

#include <cmath>

class EarlyCurve
{
public:
    // 1 - (1 - x)^(1 - c) in double precision, rounded to single; x from 0 to 1, c below 0.
    static float exact(float x, float curve)
    {
        return float(1.0 - std::pow(1.0 - double(x), 1.0 - double(curve)));
    }

    void setCurve(float newCurve);
    // The same as exact(x, curve).
    float at(float x)
    {
        const double base = 1.0 - double(x);
        double t = (base - centre) * inverseCentre;
        if (!(std::abs(t) < reach))
        {
            moveCentre(base);
            t = (base - centre) * inverseCentre;
            if (!(std::abs(t) < reach)) // a base of 0, at the very end
                return exact(x, curve);
        }
        const double risen = 1.0 - powerAtCentre * series(t);
        const float low = float(risen - doubt), high = float(risen + doubt);
        return low == high ? low : exact(x, curve);
    }

private:
    static constexpr int order = 8;
    static constexpr double reach = 0x1p-7;  // of t: its 9th power is below 2^-62
    static constexpr double doubt = 0x1p-46; // more than the series and pow can be apart

    void moveCentre(double base);

    // Horner's scheme in steps of t^2, which halves the wait from one product to the next.
    double series(double t) const
    {
        const double t2 = t * t;
        const double even = 1.0 + t2 * (factor[2] + t2 * (factor[4] + t2 * (factor[6] + t2 * factor[8])));
        const double odd = factor[1] + t2 * (factor[3] + t2 * (factor[5] + t2 * factor[7]));
        return even + t * odd;
    }

    float curve = 0.0f;
    double centre = 0.0;
    double inverseCentre = 0.0;
    double powerAtCentre = 0.0;
    double factor[order + 1] = {1.0}; // binomial coefficients of the exponent
};
