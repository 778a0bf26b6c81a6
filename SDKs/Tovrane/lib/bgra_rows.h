// SPDX-License-Identifier: GPL-3.0-or-later
// Blends rows of pixels, of blue, green, red and alpha, with colours that are not premultiplied: to the bit
// what agg::blender_rgba does pixel by pixel.
//
// AGG mixes a colour byte p with a colour q as p + (q - p) x alpha / 255, rounded; a division by 255 has no
// ties, so that this is (p x (255 - alpha) + q x alpha + 127.5) / 255, which fits 16 bits and needs no signs.
// Its rule for the alpha of the picture is the same one with a q of 255. With an alpha of 0 nothing changes,
// with 255 the colour replaces the pixel, so that neither is a case of its own.
#pragma once

#include "Tovrane/lib/pixel_lanes.h"

#include <agg_color_rgba.h>

namespace agg
{
// [any thread]  to is the row's first pixel; len pixels are there.
template <class Lanes>
struct bgra_rows
{
    static constexpr unsigned pixel_bytes = 4;

    static Lanes lanes_of(const rgba8& color) { return Lanes::pixel(color.b, color.g, color.r, 255); }
    static Lanes product(const Lanes& a, const Lanes& b) { return (a * b + half()).divided_by_255(); }

    // The pixels become the colour, alpha included.
    static void fill(int8u* to, unsigned len, const rgba8& color)
    {
        const Lanes pixel = Lanes::pixel(color.b, color.g, color.r, color.a);
        for (; len >= 4; len -= 4, to += 4 * pixel_bytes)
            Lanes::store_four(to, pixel, pixel);
        for (; len > 0; --len, to += pixel_bytes)
            pixel.store_one(to);
    }

    // One alpha for all of them; that of the colour does not count.
    static void blend_solid(int8u* to, unsigned len, const rgba8& color, int8u alpha)
    {
        const Lanes alphas = Lanes::all(alpha);
        const Lanes rest = alphas.inverted();
        const Lanes share = lanes_of(color) * alphas + half();
        const auto blended = [&](const Lanes& pixels) { return (pixels * rest + share).divided_by_255(); };
        for (; len >= 4; len -= 4, to += 4 * pixel_bytes)
            Lanes::store_four(to, blended(Lanes::load_two(to)), blended(Lanes::load_two(to + 8)));
        for (; len > 0; --len, to += pixel_bytes)
            blended(Lanes::load_one(to)).store_one(to);
    }

    // Each pixel has a cover that weakens the colour's alpha.
    static void blend_covers(int8u* to, unsigned len, const rgba8& color, const int8u* covers)
    {
        blend_covers(to, len, lanes_of(color), color.a, covers);
    }
    static void blend_covers(int8u* to, unsigned len, const Lanes& lanes, int8u alpha, const int8u* covers)
    {
        const Lanes alphas = Lanes::all(alpha);
        if (alpha == rgba8::full_value())
            blend_weights(to, len, lanes, covers, [](const Lanes& each) { return each; });
        else
            blend_weights(to, len, lanes, covers, [&](const Lanes& each) { return product(each, alphas); });
    }

    // Each byte has a cover of its own, four to a pixel, as sub-pixels have.
    static void blend_masks(int8u* to, unsigned len, const rgba8& color, const int8u* masks)
    {
        const Lanes lanes = lanes_of(color);
        const Lanes alpha = Lanes::all(color.a);
        if (color.is_opaque())
            blend_masked(to, len, lanes, masks, [](const Lanes& covers) { return covers; });
        else
            blend_masked(to, len, lanes, masks, [&](const Lanes& covers) { return product(covers, alpha); });
    }

    // Each pixel has its colour, and a cover from covers, or, if that is null, cover.
    static void blend_colors(int8u* to, unsigned len, const rgba8* colors, const int8u* covers, int8u cover)
    {
        static_assert(sizeof(rgba8) == pixel_bytes);
        const Lanes opaque = Lanes::pixel(0, 0, 0, 255);
        const Lanes same = Lanes::all(cover);
        const auto mixed = [&](const Lanes& pixels, const Lanes& color, const Lanes& weight)
        { return blended(pixels, color.red_blue_swapped() | opaque, product(color.alphas(), weight)); };
        const auto bytes = [&] { return reinterpret_cast<const int8u*>(colors); };
        for (; len >= 2; len -= 2, to += 2 * pixel_bytes, colors += 2)
        {
            const Lanes weight = covers ? Lanes::two_covers(covers) : same;
            mixed(Lanes::load_two(to), Lanes::load_two(bytes()), weight).store_two(to);
            covers += covers ? 2 : 0;
        }
        if (len > 0)
            mixed(Lanes::load_one(to), Lanes::load_one(bytes()), Lanes::all(covers ? *covers : cover))
                .store_one(to);
    }

    // Adds premultiplied pixels, weakened by the cover: what agg::comp_op_rgba_plus does. The two rows may
    // not overlap.
    static void add(int8u* to, const int8u* from, unsigned len, int8u cover)
    {
        if (cover == 0)
            return;
        const Lanes weight = Lanes::all(cover);
        const Lanes full = Lanes::all(255);
        const auto sum = [&](const Lanes& pixels, const Lanes& added)
        {
            const Lanes all = pixels + product(added, weight);
            return all.at_most(all.alphas().at_most(full)).unless_zero(added.alphas(), pixels);
        };
        each_pixel(to, from, len, sum);
    }

    // Lays premultiplied pixels over the row, by the quick rule of pictures, which divides by 256: with full
    // alpha, where transparent pixels change nothing, or with a share of 256. The two rows may not overlap.
    static void lay_over(int8u* to, const int8u* from, unsigned len)
    {
        each_pixel(to, from, len,
                   [](const Lanes& pixels, const Lanes& laid)
                   {
                       const Lanes rest = laid.alphas().inverted();
                       const Lanes below = rested(pixels, rest);
                       return ((laid & colors()) + below).unless_zero(laid.alphas(), pixels);
                   });
    }
    static void lay_over(int8u* to, const int8u* from, unsigned len, int share)
    {
        const Lanes weight = Lanes::all(unsigned(share));
        each_pixel(to, from, len,
                   [&weight](const Lanes& pixels, const Lanes& laid)
                   {
                       const Lanes rest = (laid.alphas() * weight).template shifted_down<8>().inverted();
                       const Lanes mixed = (laid * weight).half_sum(pixels * rest).template shifted_down<7>();
                       return (mixed & colors()) | (rested(pixels, rest) & opaque());
                   });
    }

private:
    static Lanes opaque() { return Lanes::pixel(0, 0, 0, 255); }
    static Lanes colors() { return Lanes::pixel(0xFFFF, 0xFFFF, 0xFFFF, 0); }
    // What is left of the pixels' colours, and of their transparency.
    static Lanes rested(const Lanes& pixels, const Lanes& rest)
    {
        return ((pixels ^ opaque()) * rest).template shifted_down<8>() ^ opaque();
    }
    template <class Blend>
    static void each_pixel(int8u* to, const int8u* from, unsigned len, const Blend& blend)
    {
        for (; len >= 2; len -= 2, to += 2 * pixel_bytes, from += 2 * pixel_bytes)
            blend(Lanes::load_two(to), Lanes::load_two(from)).store_two(to);
        if (len > 0)
            blend(Lanes::load_one(to), Lanes::load_one(from)).store_one(to);
    }
    static Lanes half() { return Lanes::all(128); }
    static Lanes blended(const Lanes& pixels, const Lanes& color, const Lanes& alpha)
    {
        return (pixels * alpha.inverted() + (color * alpha + half())).divided_by_255();
    }
    template <class Weight>
    static void blend_weights(int8u* to, unsigned len, const Lanes& color, const int8u* covers, Weight weight)
    {
        for (; len >= 2; len -= 2, to += 2 * pixel_bytes, covers += 2)
            blended(Lanes::load_two(to), color, weight(Lanes::two_covers(covers))).store_two(to);
        if (len > 0)
            blended(Lanes::load_one(to), color, weight(Lanes::all(*covers))).store_one(to);
    }
    template <class Weight>
    static void blend_masked(int8u* to, unsigned len, const Lanes& color, const int8u* masks, Weight weight)
    {
        const auto mixed = [&](unsigned offset)
        { return blended(Lanes::load_two(to + offset), color, weight(Lanes::load_two(masks + offset))); };
        for (; len >= 4; len -= 4, to += 4 * pixel_bytes, masks += 4 * pixel_bytes)
            Lanes::store_four(to, mixed(0), mixed(2 * pixel_bytes));
        for (; len >= 2; len -= 2, to += 2 * pixel_bytes, masks += 2 * pixel_bytes)
            mixed(0).store_two(to);
        for (; len > 0; --len, to += pixel_bytes, masks += pixel_bytes)
            blended(Lanes::load_one(to), color, weight(Lanes::load_one(masks))).store_one(to);
    }
};
}
