// SPDX-License-Identifier: GPL-3.0-or-later
// The pixel format of shapes and grey text: what agg::pixfmt_alpha_blend_rgba with agg::blender_rgba draws,
// to the bit, several pixels at a time. To be used with agg::renderer_base.
#pragma once

#include "Tovrane/lib/bgra_rows.h"

#include <agg_rendering_buffer.h>

namespace agg
{
// [window thread]  One thread at a time. The caller has clipped: all pixels lie within the picture.
class pixfmt_bgra
{
public:
    typedef rgba8 color_type;
    typedef order_bgra order_type;
    typedef row_accessor<int8u> rbuf_type;
    typedef rbuf_type::row_data row_data;
    typedef int8u value_type;

    // The buffer has to outlive it.
    void attach(rbuf_type& buffer) { m_rbuf = &buffer; }

    unsigned width() const { return m_rbuf->width(); }
    unsigned height() const { return m_rbuf->height(); }

    // Does not blend: the pixels become the colour, alpha included.
    void copy_hline(int x, int y, unsigned len, const color_type& color)
    {
        rows::fill(pixel_at(x, y), len, color);
    }

    void blend_hline(int x, int y, unsigned len, const color_type& color, int8u cover)
    {
        blend_run(pixel_at(x, y), len, color, cover);
    }

    void blend_solid_hspan(int x, int y, unsigned len, const color_type& color, const int8u* covers)
    {
        rows::blend_covers(pixel_at(x, y), len, color, covers);
    }

    // Without covers, cover is that of all pixels.
    void blend_color_hspan(int x, int y, unsigned len, const color_type* colors, const int8u* covers,
                           int8u cover)
    {
        rows::blend_colors(pixel_at(x, y), len, colors, covers, cover);
    }

    // Draws with one colour what a cell_rasterizer covers whose window lies within the picture.
    class ink
    {
    public:
        ink(pixfmt_bgra& pixels, const color_type& color)
            : m_pixels(pixels), m_color(color), m_lanes(rows::lanes_of(color))
        {
        }

        bool begin_row(int y, int, int)
        {
            m_row = m_pixels.pixel_at(0, y);
            return true;
        }
        void covers(int x, unsigned len, const int8u* covers)
        {
            rows::blend_covers(at(x), len, m_lanes, m_color.a, covers);
        }
        void run(int x, unsigned len, int8u cover) { blend_run(at(x), len, m_color, cover); }

    private:
        int8u* at(int x) { return m_row + x * int(rows::pixel_bytes); }

        pixfmt_bgra& m_pixels;
        const color_type m_color;
        const pixel_lanes m_lanes;
        int8u* m_row = nullptr;
    };

private:
    using rows = bgra_rows<pixel_lanes>;

    int8u* pixel_at(int x, int y) { return m_rbuf->row_ptr(y) + x * int(rows::pixel_bytes); }
    static void blend_run(int8u* to, unsigned len, const color_type& color, int8u cover)
    {
        const int8u alpha = color_type::mult_cover(color.a, cover);
        if (alpha == color_type::full_value())
            rows::fill(to, len, color);
        else if (alpha != 0)
            rows::blend_solid(to, len, color, alpha);
    }

    rbuf_type* m_rbuf = nullptr;
};
}
