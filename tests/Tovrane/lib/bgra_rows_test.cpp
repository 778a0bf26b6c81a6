// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/bgra_rows.h"

#include <agg_pixfmt_rgba.h>
#include <agg_rendering_buffer.h>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace
{
using Bytes = std::vector<agg::int8u>;
using PlainRow = agg::pixfmt_alpha_blend_rgba<agg::blender_rgba<agg::rgba8, agg::order_bgra>,
                                              agg::row_accessor<agg::int8u>>;

// Random numbers in which nothing and all are frequent, as they are in pictures.
class Numbers
{
public:
    agg::int8u byte()
    {
        const unsigned any = engine();
        return agg::int8u(any & 0x300 ? any : (any & 1) * 255);
    }
    Bytes bytes(size_t count)
    {
        Bytes made(count);
        for (agg::int8u& b : made)
            b = byte();
        return made;
    }
    agg::rgba8 color() { return {byte(), byte(), byte(), byte()}; }

private:
    std::mt19937 engine{1};
};

template <class Lanes>
class BgraRows : public testing::Test
{
protected:
    static constexpr unsigned longest = 21;

    // Draws on random pixels in both ways; the pixel after the last one must stay, too.
    template <class Quick, class Plain>
    void expectSame(unsigned length, Quick quick, Plain plain)
    {
        Bytes drawn = numbers.bytes((length + 1) * 4);
        Bytes expected = drawn;
        agg::row_accessor<agg::int8u> row(expected.data(), length + 1, 1, int(expected.size()));
        PlainRow pixels(row);
        quick(drawn.data());
        plain(pixels);
        EXPECT_EQ(drawn, expected) << length << " pixels";
    }

    Numbers numbers;
};

#if defined(__SSE2__)
using AllLanes = testing::Types<agg::pixel_lanes_plain, agg::pixel_lanes_sse2>;
#else
using AllLanes = testing::Types<agg::pixel_lanes_plain>;
#endif
TYPED_TEST_SUITE(BgraRows, AllLanes);
}

TYPED_TEST(BgraRows, MixTwoBytesAsAggDoesWhateverTheyAre)
{
    Bytes pixels(256 * 4), expected(256 * 4);
    for (unsigned q = 0; q < 256; ++q)
        for (unsigned alpha = 0; alpha < 256; ++alpha)
        {
            for (unsigned p = 0; p < 256; ++p)
                for (unsigned i = 0; i < 4; ++i)
                {
                    pixels[p * 4 + i] = agg::int8u(p);
                    expected[p * 4 + i] =
                        i < 3 ? agg::rgba8::lerp(agg::int8u(p), agg::int8u(q), agg::int8u(alpha))
                              : agg::rgba8::prelerp(agg::int8u(p), agg::int8u(alpha), agg::int8u(alpha));
                }
            agg::bgra_rows<TypeParam>::blend_solid(pixels.data(), 256, {q, q, q}, agg::int8u(alpha));
            ASSERT_EQ(pixels, expected) << q << " by " << alpha;
        }
}

TYPED_TEST(BgraRows, AreThoseOfAgg)
{
    using Rows = agg::bgra_rows<TypeParam>;
    for (int round = 0; round < 2000; ++round)
    {
        const unsigned length = 1 + unsigned(round) % this->longest;
        const agg::rgba8 color = this->numbers.color();
        const agg::int8u cover = this->numbers.byte();
        const Bytes covers = this->numbers.bytes(length);
        std::vector<agg::rgba8> colors(length);
        for (agg::rgba8& one : colors)
            one = this->numbers.color();

        this->expectSame(
            length, [&](agg::int8u* to) { Rows::fill(to, length, color); },
            [&](PlainRow& row) { row.copy_hline(0, 0, length, color); });
        this->expectSame(
            length,
            [&](agg::int8u* to)
            { Rows::blend_solid(to, length, color, agg::rgba8::mult_cover(color.a, cover)); },
            [&](PlainRow& row) { row.blend_hline(0, 0, length, color, cover); });
        this->expectSame(
            length, [&](agg::int8u* to) { Rows::blend_covers(to, length, color, covers.data()); },
            [&](PlainRow& row) { row.blend_solid_hspan(0, 0, length, color, covers.data()); });
        for (const agg::int8u* each : {covers.data(), static_cast<const agg::int8u*>(nullptr)})
            this->expectSame(
                length, [&](agg::int8u* to) { Rows::blend_colors(to, length, colors.data(), each, cover); },
                [&](PlainRow& row) { row.blend_color_hspan(0, 0, length, colors.data(), each, cover); });
    }
}

// Any bytes, premultiplied or not.
TYPED_TEST(BgraRows, AddLikeTheOperatorOfAgg)
{
    using Plus = agg::comp_op_rgba_plus<agg::rgba8, agg::order_bgra>;
    for (int round = 0; round < 6000; ++round)
    {
        const unsigned length = 1 + unsigned(round) % this->longest;
        const agg::int8u cover = this->numbers.byte();
        const Bytes from = this->numbers.bytes(length * 4);
        Bytes drawn = this->numbers.bytes((length + 1) * 4);
        Bytes expected = drawn;
        for (size_t i = 0; i < from.size(); i += 4)
            Plus::blend_pix(&expected[i], from[i + 2], from[i + 1], from[i], from[i + 3], cover);
        agg::bgra_rows<TypeParam>::add(drawn.data(), from.data(), length, cover);
        ASSERT_EQ(drawn, expected) << length << " pixels, cover " << int(cover);
    }
}

TYPED_TEST(BgraRows, LayPicturesOverOthers)
{
    for (int round = 0; round < 12000; ++round)
    {
        const unsigned length = 1 + unsigned(round) % this->longest;
        const int share = round % 3 == 0 ? 256 : this->numbers.byte() + 1;
        const bool isWhole = round % 2 == 0;
        const Bytes from = this->numbers.bytes(length * 4);
        Bytes drawn = this->numbers.bytes((length + 1) * 4);
        Bytes expected = drawn;
        for (size_t i = 0; i < from.size(); i += 4)
        {
            const int rest = 255 - (isWhole ? from[i + 3] : (from[i + 3] * share) >> 8);
            if (isWhole && from[i + 3] == 0)
                continue;
            for (size_t c = i; c < i + 3; ++c)
                expected[c] = agg::int8u(std::min(isWhole ? from[c] + ((rest * drawn[c]) >> 8)
                                                          : (from[c] * share + rest * drawn[c]) >> 8,
                                                  255));
            expected[i + 3] = agg::int8u(255 - (((255 - drawn[i + 3]) * rest) >> 8));
        }
        if (isWhole)
            agg::bgra_rows<TypeParam>::lay_over(drawn.data(), from.data(), length);
        else
            agg::bgra_rows<TypeParam>::lay_over(drawn.data(), from.data(), length, share);
        ASSERT_EQ(drawn, expected) << length << " pixels, share " << share << (isWhole ? " whole" : "");
    }
}

TYPED_TEST(BgraRows, GiveEachByteACoverOfItsOwn)
{
    for (int round = 0; round < 2000; ++round)
    {
        const unsigned length = 1 + unsigned(round) % this->longest;
        const agg::rgba8 color = this->numbers.color();
        const agg::int8u channels[] = {color.b, color.g, color.r};
        Bytes masks = this->numbers.bytes(length * 4);
        Bytes drawn = this->numbers.bytes(length * 4);
        Bytes expected = drawn;
        for (size_t i = 0; i < masks.size(); ++i)
            if (i % 4 == 3)
                masks[i] = 0;
            else
                expected[i] =
                    agg::rgba8::lerp(drawn[i], channels[i % 4], agg::rgba8::mult_cover(color.a, masks[i]));
        agg::bgra_rows<TypeParam>::blend_masks(drawn.data(), length, color, masks.data());
        EXPECT_EQ(drawn, expected) << length << " pixels";
    }
}
