// SPDX-License-Identifier: GPL-3.0-or-later
// The pixel format of sub-pixel text: a picture of blue, green, red and alpha, in which x counts sub-pixels,
// the thirds of a pixel as they lie side by side on the screen.
//
// Each sub-pixel has a coverage of its own, which blends the byte of its colour: from left to right red,
// green and blue, or the reverse. Alpha stays as it is, since a window has none. Glyphs are drawn by whole
// pixels; the sub-pixel by itself is for agg::renderer_base, whose clip box counts sub-pixels, too.
#pragma once

#include "Tovrane/lib/bgra_rows.h"

#include <agg_rendering_buffer.h>

namespace agg
{
// [window thread]  One thread at a time.
class ren_rgba_lcd
{
public:
    typedef rgba8 color_type;
    typedef order_bgra order_type;
    typedef row_accessor<int8u> rbuf_type;
    typedef rbuf_type::row_data row_data;
    typedef int8u value_type;

    // A default-made one has to be attached before it is used. The buffer has to outlive it.
    ren_rgba_lcd() = default;
    explicit ren_rgba_lcd(rbuf_type& buffer) : m_rbuf(&buffer) {}
    void attach(rbuf_type& buffer) { m_rbuf = &buffer; }

    // The order of the colours on the screen: red is the leftmost one (the default), or blue.
    void red_first(bool first) { m_red_first = first; }

    // The bytes of a pixel that its three sub-pixels blend, from left to right.
    static const int* bytes_of_thirds(bool red_first);

    // In sub-pixels.
    unsigned width() const { return m_rbuf->width() * 3; }
    unsigned height() const { return m_rbuf->height(); }

    // The caller has clipped: len sub-pixels from x on lie within the picture.
    void blend_hline(int x, int y, unsigned len, const color_type& color, int8u cover);
    void blend_solid_hspan(int x, int y, unsigned len, const color_type& color, const int8u* covers);
    // Here x and len count whole pixels, and each pixel has four covers, one for each of its bytes; that of
    // alpha is 0.
    void blend_pixels(int x, int y, unsigned len, const color_type& color, const int8u* covers)
    {
        bgra_rows<pixel_lanes>::blend_masks(m_rbuf->row_ptr(y) + x * 4, len, color, covers);
    }

private:
    class Cursor;

    rbuf_type* m_rbuf = nullptr;
    bool m_red_first = true;
};
}
