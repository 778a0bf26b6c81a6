// SPDX-License-Identifier: GPL-3.0-or-later
// Multiplication and rounding of numbers so small that the processor would take the slow road.
//
// Subnormal numbers (below 2^-126) must come out as they are, not as zero, but one of them costs a
// processor a hundred cycles or more wherever it is read or made. The functions below give the same bits
// as the plain operation, through doubles and integers, where none of them is subnormal, and without a
// branch that would depend on the signal.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

constexpr uint32_t signBit = 0x80000000u;
constexpr int32_t tinyBits = 0x17800000; // 2^-80: below it a product with a gain may be subnormal
constexpr int32_t infinityBits = 0x7f800000;
constexpr int mantissaBits = 23; // of a float, without the leading one

// One lane for each channel.
using Numbers = uint64_t __attribute__((vector_size(16)));
using Doubles = double __attribute__((vector_size(16)));

// For numbers below 2^15: the larger of each and least. (Compared as 16-bit words, which the oldest
// vector units can do. Little-endian.)
inline Numbers atLeast(Numbers numbers, short least)
{
    using Words = short __attribute__((vector_size(16)));
    const Words words = Words(numbers), bound = {least, 0, 0, 0, least, 0, 0, 0};
    return Numbers(words > bound ? words : bound);
}

// What is among the samples of a piece: any below tinyBits (zeros, too), and any infinity or NaN.
struct SampleSizes
{
    bool tiny, notFinite;
};

inline SampleSizes sizesOf(const float* samples, long count)
{
    using Lanes = int32_t __attribute__((vector_size(16)));
    Lanes tiny = {}, notFinite = {};
    long i = 0;
    for (; i + 4 <= count; i += 4)
    {
        Lanes bits;
        std::memcpy(&bits, samples + i, sizeof bits);
        bits &= ~int32_t(signBit);
        tiny |= bits < tinyBits;
        notFinite |= bits >= infinityBits;
    }
    SampleSizes sizes = {(tiny[0] | tiny[1] | tiny[2] | tiny[3]) != 0,
                         (notFinite[0] | notFinite[1] | notFinite[2] | notFinite[3]) != 0};
    for (; i < count; ++i)
    {
        const int32_t bits = std::bit_cast<int32_t>(samples[i]) & ~int32_t(signBit);
        sizes.tiny |= bits < tinyBits;
        sizes.notFinite |= bits >= infinityBits;
    }
    return sizes;
}

// Whether a piece has to be multiplied exactly. The plain multiplication gives the same bits; it takes
// infinities and NaNs, which the exact one cannot.
inline bool needsExactGain(const float* left, const float* right, long count)
{
    const SampleSizes ofLeft = sizesOf(left, count), ofRight = sizesOf(right, count);
    return (ofLeft.tiny || ofRight.tiny) && !ofLeft.notFinite && !ofRight.notFinite;
}

// Both samples times gain, for finite samples and a normal gain of at most about 1, or 0. The exact
// product of a 24-bit by a 24-bit number fits a double; adding 2^52 units of its last place in single
// precision rounds it there, and leaves the count of units in the sum's last bits.
inline void multiplyExactly(float& left, float& right, float gain)
{
    const Numbers bits = {std::bit_cast<uint32_t>(left), std::bit_cast<uint32_t>(right)};
    const uint32_t gainBits = std::bit_cast<uint32_t>(gain);
    const double gainSize = double(std::bit_cast<float>(gainBits & ~signBit));

    const Numbers magnitude = bits & ~uint64_t(signBit);
    const Numbers exponent = atLeast(magnitude >> mantissaBits, 1); // subnormals: that of the smallest normal
    const Numbers mantissa = magnitude - ((exponent - 1) << mantissaBits);
    const Doubles whole = Doubles(mantissa | 0x4330000000000000u) - 0x1p52;
    const Doubles product = whole * Doubles((exponent + (1023 - 150)) << 52) * gainSize;

    const Numbers resultExponent = atLeast(Numbers(product) >> 52, 1023 - 126);
    const Doubles rounded = product + Doubles((resultExponent + (52 - 23)) << 52);
    const Numbers units = Numbers(rounded) & 0xFFFFFFFFu; // with the leading one, if normal
    const Numbers result = units + ((resultExponent - (1023 - 126)) << mantissaBits);
    const Numbers sign = (bits ^ gainBits) & signBit;
    left = std::bit_cast<float>(uint32_t(result[0] | sign[0]));
    right = std::bit_cast<float>(uint32_t(result[1] | sign[1]));
}

// double(float(x)): x rounded to single precision, for x of 0 and above.
inline double roundedToSingle(double x)
{
    constexpr double rounder = 0x1p-97; // its last place is worth the smallest subnormal number
    if (x < 0x1p-126) [[unlikely]]
        return (x + rounder) - rounder;
    return double(float(x));
}
