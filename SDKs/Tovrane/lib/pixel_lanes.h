// SPDX-License-Identifier: GPL-3.0-or-later
// Two pixels of four bytes each, widened to eight numbers of 16 bits that are worked on at once: the one
// place that knows the processor.
//
// pixel_lanes_sse2 is for x86-64, which always has it; pixel_lanes_plain computes the same everywhere else.
// pixel_lanes is the one to use. Numbers wrap around at 65536; one from 256 to 32767 is stored as 255. A
// value of one pixel fills the lower half.
#pragma once

#include <agg_basics.h>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace agg
{
// [any thread]  A plain value.
class pixel_lanes_plain
{
public:
    static pixel_lanes_plain all(unsigned value)
    {
        return each([=](int) { return value; });
    }
    // The same pixel twice; the values are in the order of the bytes.
    static pixel_lanes_plain pixel(unsigned v0, unsigned v1, unsigned v2, unsigned v3)
    {
        const unsigned values[] = {v0, v1, v2, v3};
        return each([&](int i) { return values[i & 3]; });
    }
    static pixel_lanes_plain load_one(const int8u* from)
    {
        return each([=](int i) { return i < 4 ? from[i] : 0u; });
    }
    static pixel_lanes_plain load_two(const int8u* from)
    {
        return each([=](int i) { return from[i]; });
    }
    // Each of two covers for all four numbers of its pixel.
    static pixel_lanes_plain two_covers(const int8u* covers)
    {
        return each([=](int i) { return covers[i / 4]; });
    }
    static void store_four(int8u* to, const pixel_lanes_plain& low, const pixel_lanes_plain& high)
    {
        low.store_two(to);
        high.store_two(to + 8);
    }
    void store_one(int8u* to) const { store(to, 4); }
    void store_two(int8u* to) const { store(to, 8); }

    // Sixteen pixels, of which all are read before one is written: copies them if they are all opaque.
    static bool copy_sixteen_opaque(int8u* to, const int8u* from)
    {
        int8u pixels[64];
        std::memcpy(pixels, from, sizeof pixels);
        for (int i = 3; i < 64; i += 4)
            if (pixels[i] != 255)
                return false;
        std::memcpy(to, pixels, sizeof pixels);
        return true;
    }

    pixel_lanes_plain operator*(const pixel_lanes_plain& b) const
    {
        return each([&](int i) { return unsigned(m_values[i]) * b.m_values[i]; });
    }
    pixel_lanes_plain operator+(const pixel_lanes_plain& b) const
    {
        return each([&](int i) { return unsigned(m_values[i]) + b.m_values[i]; });
    }
    // 255 minus each number.
    pixel_lanes_plain inverted() const
    {
        return each([&](int i) { return 255u - m_values[i]; });
    }
    // Each number, which is 128 more than a product of bytes or less, divided by 255 with rounding.
    pixel_lanes_plain divided_by_255() const
    {
        return each([&](int i) { return ((m_values[i] >> 8) + unsigned(m_values[i])) >> 8; });
    }
    // Half of each sum, rounded down, also where the sum does not fit.
    pixel_lanes_plain half_sum(const pixel_lanes_plain& b) const
    {
        return each([&](int i) { return (unsigned(m_values[i]) + b.m_values[i]) >> 1; });
    }
    template <int bits>
    pixel_lanes_plain shifted_down() const
    {
        return each([&](int i) { return unsigned(m_values[i]) >> bits; });
    }
    pixel_lanes_plain operator^(const pixel_lanes_plain& b) const
    {
        return each([&](int i) { return m_values[i] ^ b.m_values[i]; });
    }
    pixel_lanes_plain operator&(const pixel_lanes_plain& b) const
    {
        return each([&](int i) { return m_values[i] & b.m_values[i]; });
    }
    // The smaller number of each two below 32768.
    pixel_lanes_plain at_most(const pixel_lanes_plain& b) const
    {
        return each([&](int i) { return m_values[i] < b.m_values[i] ? m_values[i] : b.m_values[i]; });
    }
    // Where the other number is 0, that one, and else this one.
    pixel_lanes_plain unless_zero(const pixel_lanes_plain& other, const pixel_lanes_plain& that) const
    {
        return each([&](int i) { return other.m_values[i] == 0 ? that.m_values[i] : m_values[i]; });
    }
    // The last number of each pixel for all four.
    pixel_lanes_plain alphas() const
    {
        return each([&](int i) { return m_values[i | 3]; });
    }
    // The first and the third number of each pixel exchanged.
    pixel_lanes_plain red_blue_swapped() const
    {
        return each([&](int i) { return m_values[i & 1 ? i : i ^ 2]; });
    }
    pixel_lanes_plain operator|(const pixel_lanes_plain& b) const
    {
        return each([&](int i) { return m_values[i] | b.m_values[i]; });
    }

private:
    template <class Value>
    static pixel_lanes_plain each(const Value& value)
    {
        pixel_lanes_plain made;
        for (int i = 0; i < 8; ++i)
            made.m_values[i] = int16u(value(i));
        return made;
    }
    void store(int8u* to, int count) const
    {
        for (int i = 0; i < count; ++i)
            to[i] = int8u(m_values[i] < 255 ? m_values[i] : 255);
    }

    int16u m_values[8];
};

#if defined(__SSE2__)
// [any thread]  A plain value. What the operations do is said above.
class pixel_lanes_sse2
{
public:
    static pixel_lanes_sse2 all(unsigned value) { return _mm_set1_epi16(short(value)); }
    static pixel_lanes_sse2 pixel(unsigned v0, unsigned v1, unsigned v2, unsigned v3)
    {
        return _mm_set_epi16(short(v3), short(v2), short(v1), short(v0), short(v3), short(v2), short(v1),
                             short(v0));
    }
    static pixel_lanes_sse2 load_one(const int8u* from)
    {
        int word;
        std::memcpy(&word, from, sizeof word);
        return _mm_unpacklo_epi8(_mm_cvtsi32_si128(word), _mm_setzero_si128());
    }
    static pixel_lanes_sse2 load_two(const int8u* from)
    {
        return _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)),
                                 _mm_setzero_si128());
    }
    static pixel_lanes_sse2 two_covers(const int8u* covers)
    {
        const __m128i both = _mm_unpacklo_epi16(_mm_cvtsi32_si128(covers[0]), _mm_cvtsi32_si128(covers[1]));
        return _mm_shuffle_epi32(_mm_shufflelo_epi16(both, _MM_SHUFFLE(1, 1, 0, 0)), _MM_SHUFFLE(1, 1, 0, 0));
    }
    static void store_four(int8u* to, const pixel_lanes_sse2& low, const pixel_lanes_sse2& high)
    {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(low.m_values, high.m_values));
    }
    void store_one(int8u* to) const
    {
        const int word = _mm_cvtsi128_si32(_mm_packus_epi16(m_values, m_values));
        std::memcpy(to, &word, sizeof word);
    }
    void store_two(int8u* to) const
    {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(m_values, m_values));
    }

    static bool copy_sixteen_opaque(int8u* to, const int8u* from)
    {
        const auto load = [from](int i)
        { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from) + i); };
        const auto store = [to](int i, __m128i v)
        { _mm_storeu_si128(reinterpret_cast<__m128i*>(to) + i, v); };
        const __m128i p0 = load(0), p1 = load(1), p2 = load(2), p3 = load(3);
        const __m128i common = _mm_and_si128(_mm_and_si128(p0, p1), _mm_and_si128(p2, p3));
        const __m128i alphas = _mm_or_si128(common, _mm_set1_epi32(0x00FFFFFF));
        if (_mm_movemask_epi8(_mm_cmpeq_epi8(alphas, _mm_set1_epi8(-1))) != 0xFFFF)
            return false;
        store(0, p0);
        store(1, p1);
        store(2, p2);
        store(3, p3);
        return true;
    }

    pixel_lanes_sse2 operator*(const pixel_lanes_sse2& b) const
    {
        return _mm_mullo_epi16(m_values, b.m_values);
    }
    pixel_lanes_sse2 operator+(const pixel_lanes_sse2& b) const
    {
        return _mm_add_epi16(m_values, b.m_values);
    }
    pixel_lanes_sse2 operator|(const pixel_lanes_sse2& b) const { return _mm_or_si128(m_values, b.m_values); }
    pixel_lanes_sse2 inverted() const { return _mm_sub_epi16(_mm_set1_epi16(255), m_values); }
    pixel_lanes_sse2 divided_by_255() const
    {
        return _mm_srli_epi16(_mm_add_epi16(_mm_srli_epi16(m_values, 8), m_values), 8);
    }
    pixel_lanes_sse2 half_sum(const pixel_lanes_sse2& b) const
    {
        const __m128i odd = _mm_and_si128(_mm_xor_si128(m_values, b.m_values), _mm_set1_epi16(1));
        return _mm_sub_epi16(_mm_avg_epu16(m_values, b.m_values), odd);
    }
    template <int bits>
    pixel_lanes_sse2 shifted_down() const
    {
        return _mm_srli_epi16(m_values, bits);
    }
    pixel_lanes_sse2 operator^(const pixel_lanes_sse2& b) const
    {
        return _mm_xor_si128(m_values, b.m_values);
    }
    pixel_lanes_sse2 operator&(const pixel_lanes_sse2& b) const
    {
        return _mm_and_si128(m_values, b.m_values);
    }
    pixel_lanes_sse2 at_most(const pixel_lanes_sse2& b) const { return _mm_min_epi16(m_values, b.m_values); }
    pixel_lanes_sse2 unless_zero(const pixel_lanes_sse2& other, const pixel_lanes_sse2& that) const
    {
        const __m128i zeroes = _mm_cmpeq_epi16(other.m_values, _mm_setzero_si128());
        return _mm_or_si128(_mm_and_si128(zeroes, that.m_values), _mm_andnot_si128(zeroes, m_values));
    }
    pixel_lanes_sse2 alphas() const { return shuffled<_MM_SHUFFLE(3, 3, 3, 3)>(); }
    pixel_lanes_sse2 red_blue_swapped() const { return shuffled<_MM_SHUFFLE(3, 0, 1, 2)>(); }

private:
    pixel_lanes_sse2(__m128i values) : m_values(values) {}

    template <int order>
    pixel_lanes_sse2 shuffled() const
    {
        return _mm_shufflehi_epi16(_mm_shufflelo_epi16(m_values, order), order);
    }

    __m128i m_values;
};

using pixel_lanes = pixel_lanes_sse2;
#else
using pixel_lanes = pixel_lanes_plain;
#endif
}
