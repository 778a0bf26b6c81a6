// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/scanline_storage_lcd.h"

#include <cstdlib>

namespace agg
{
void scanline_storage_lcd::begin_row(int first_x)
{
    m_row_x = first_x - reach;
    m_row.clear();
}

void scanline_storage_lcd::add_span(int x, int len, const int8u* covers)
{
    const unsigned count = unsigned(std::abs(len));
    const unsigned first = unsigned(x - m_row_x);
    if (m_row.size() < first + count + reach)
        m_row.resize(first + count + reach);
    for (unsigned i = 0; i < count; ++i)
        spread(first + i, len < 0 ? *covers : covers[i]);
}

void scanline_storage_lcd::spread(unsigned at, unsigned cover)
{
    int8u* const middle = &m_row[at];
    middle[-2] = int8u(middle[-2] + m_filter.tertiary(cover));
    middle[-1] = int8u(middle[-1] + m_filter.secondary(cover));
    middle[0] = int8u(middle[0] + m_filter.primary(cover));
    middle[1] = int8u(middle[1] + m_filter.secondary(cover));
    middle[2] = int8u(middle[2] + m_filter.tertiary(cover));
}

// Stores what has coverage, as spans.
void scanline_storage_lcd::end_row(int y)
{
    const unsigned size = unsigned(m_row.size());
    m_scanline.reset(m_row_x, m_row_x + int(size));
    for (unsigned begin = 0, end; begin < size; begin = end)
    {
        const bool empty = m_row[begin] == 0;
        for (end = begin + 1; end < size && (m_row[end] == 0) == empty;)
            ++end;
        if (!empty)
            m_scanline.add_cells(m_row_x + int(begin), end - begin, &m_row[begin]);
    }
    if (m_scanline.num_spans() == 0)
        return;
    m_scanline.finalize(y);
    m_filtered.render(m_scanline);
}
}
