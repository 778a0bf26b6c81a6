// SPDX-License-Identifier: GPL-3.0-or-later
// Stores scanlines in sub-pixels (thirds of a pixel) and filters them on the way in.
//
// It is a renderer for agg::render_scanlines, with x in sub-pixels. It serialises for the font cache in the
// form of agg::scanline_storage_aa8, which agg::serialized_scanlines_adaptor_aa8 reads.
#pragma once

#include "Tovrane/lib/lcd_distribution_lut.h"

#include <agg_scanline_storage_aa.h>
#include <agg_scanline_u.h>
#include <vector>

namespace agg
{
// [window thread]  One thread at a time.
class scanline_storage_lcd
{
public:
    // The filter has to outlive the storage.
    explicit scanline_storage_lcd(const lcd_distribution_lut& filter) : m_filter(filter) {}

    void prepare() { m_filtered.prepare(); }

    template <class Scanline>
    void render(const Scanline& scanline)
    {
        unsigned spans = scanline.num_spans();
        if (spans == 0)
            return;
        auto span = scanline.begin();
        begin_row(span->x);
        for (;; ++span)
        {
            add_span(span->x, span->len, span->covers);
            if (--spans == 0)
                break;
        }
        end_row(scanline.y());
    }

    int min_x() const { return m_filtered.min_x(); }
    int min_y() const { return m_filtered.min_y(); }
    int max_x() const { return m_filtered.max_x(); }
    int max_y() const { return m_filtered.max_y(); }

    // The number of bytes that serialize writes.
    unsigned byte_size() const { return m_filtered.byte_size(); }
    void serialize(int8u* data) const { m_filtered.serialize(data); }

private:
    static constexpr int reach = 2; // of the filter, in sub-pixels to each side

    void begin_row(int first_x);
    // A negative len stands for a run of one cover.
    void add_span(int x, int len, const int8u* covers);
    void spread(unsigned at, unsigned cover);
    void end_row(int y);

    const lcd_distribution_lut& m_filter;
    scanline_storage_aa8 m_filtered;
    std::vector<int8u> m_row; // covers from m_row_x on
    int m_row_x = 0;
    scanline_u8 m_scanline;
};
}
