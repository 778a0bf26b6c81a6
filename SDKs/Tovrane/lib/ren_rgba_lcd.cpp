// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/ren_rgba_lcd.h"

#include <cstddef>

namespace agg
{
constexpr size_t bytesOfPixel = 4;

// Bytes of a pixel by the places of their colours on the screen.
constexpr int redFirst[3] = {order_bgra::R, order_bgra::G, order_bgra::B};
constexpr int blueFirst[3] = {order_bgra::B, order_bgra::G, order_bgra::R};

const int* ren_rgba_lcd::bytes_of_thirds(bool red_first)
{
    return red_first ? redFirst : blueFirst;
}

class ren_rgba_lcd::Cursor
{
public:
    Cursor(int8u* row, int x, const color_type& color, bool isRedFirst)
        : pixel(row + size_t(x) / 3 * bytesOfPixel), channelOfThird(bytes_of_thirds(isRedFirst)), third(x % 3)
    {
        channels[order_bgra::B] = color.b;
        channels[order_bgra::G] = color.g;
        channels[order_bgra::R] = color.r;
    }

    void blend(int8u alpha)
    {
        const int channel = channelOfThird[third];
        pixel[channel] = color_type::lerp(pixel[channel], channels[channel], alpha);
    }

    void operator++()
    {
        if (++third < 3)
            return;
        third = 0;
        pixel += bytesOfPixel;
    }

private:
    int8u* pixel;
    const int* channelOfThird;
    int third;
    int8u channels[bytesOfPixel] = {};
};

void ren_rgba_lcd::blend_hline(int x, int y, unsigned len, const color_type& color, int8u cover)
{
    const int8u alpha = color_type::mult_cover(color.a, cover);
    Cursor at(m_rbuf->row_ptr(y), x, color, m_red_first);
    for (; len > 0; --len, ++at)
        at.blend(alpha);
}

void ren_rgba_lcd::blend_solid_hspan(int x, int y, unsigned len, const color_type& color, const int8u* covers)
{
    Cursor at(m_rbuf->row_ptr(y), x, color, m_red_first);
    for (; len > 0; --len, ++at)
        at.blend(color_type::mult_cover(color.a, *covers++));
}
}
