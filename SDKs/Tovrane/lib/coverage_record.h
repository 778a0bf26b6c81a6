// SPDX-License-Identifier: GPL-3.0-or-later
// The coverage of a shape, written down while a cell_rasterizer sweeps it, to be drawn again without
// rasterising: all of it, or what of it lies in a window.
#pragma once

#include <agg_basics.h>
#include <algorithm>
#include <vector>

namespace agg
{
// [window thread]  One thread at a time. Its memory is kept from shape to shape.
class coverage_record
{
public:
    // What the coverage depends on, apart from the outline: the box at which it was cut, in 1/256 of a pixel,
    // and the window.
    struct frame
    {
        rect_i clip{0, 0, 0, 0};
        rect_i window{0, 0, 0, 0};

        bool operator==(const frame& other) const
        {
            return is_same(clip, other.clip) && is_same(window, other.window);
        }

    private:
        static bool is_same(const rect_i& a, const rect_i& b)
        {
            return a.x1 == b.x1 && a.y1 == b.y1 && a.x2 == b.x2 && a.y2 == b.y2;
        }
    };

    bool is_complete(const frame& wanted) const { return m_state == complete && m_frame == wanted; }
    void forget() { m_state = empty; }

    // Begins to write down what a sweep gives to write. False if it was too much before.
    bool begin(const frame& made)
    {
        if (m_state == too_large && m_frame == made)
            return false;
        m_frame = made;
        m_state = complete;
        m_spans.clear();
        m_covers.clear();
        return true;
    }
    void write(int y, int x, unsigned length, const int8u* covers)
    {
        if (!add(y, x, length, int(m_covers.size()), length))
            return;
        m_covers.insert(m_covers.end(), covers, covers + length);
    }
    void write_run(int y, int x, unsigned length, int8u cover) { add(y, x, length, -1 - int(cover), 0); }

    // Gives what lies in the window to a sink, as cell_rasterizer::sweep does; all four edges are inside.
    template <class Sink>
    void replay(const rect_i& window, Sink&& sink) const
    {
        auto next = std::lower_bound(m_spans.begin(), m_spans.end(), window.y1,
                                     [](const span& each, int y) { return each.y < y; });
        for (int row = window.y1 - 1; next != m_spans.end() && next->y <= window.y2; ++next)
        {
            const int x = std::max(next->x, window.x1);
            const int length = std::min(next->x + int(next->length) - 1, window.x2) - x + 1;
            if (length <= 0)
                continue;
            if (row != next->y)
                sink.begin_row(row = next->y, window.x1, window.x2 + 1);
            if (next->content < 0)
                sink.run(x, unsigned(length), int8u(-1 - next->content));
            else
                sink.covers(x, unsigned(length), &m_covers[size_t(next->content + x - next->x)]);
        }
    }

private:
    enum state
    {
        empty,
        complete,
        too_large
    };
    struct span
    {
        int y;
        int x;
        unsigned length;
        int content; // the first of its covers, or, for a run, -1 minus its cover
    };
    static constexpr size_t most_spans = 2048;
    static constexpr size_t most_covers = 16384;

    bool add(int y, int x, unsigned length, int content, size_t covers)
    {
        if (m_spans.size() == most_spans || m_covers.size() + covers > most_covers)
            m_state = too_large;
        if (m_state == complete)
            m_spans.push_back({y, x, length, content});
        return m_state == complete;
    }

    frame m_frame;
    state m_state = empty;
    std::vector<span> m_spans; // from top to bottom, and from left to right
    std::vector<int8u> m_covers;
};

// Gives what a sweep gives to a sink, and writes it down as well.
template <class Sink>
class recording_sink
{
public:
    recording_sink(Sink& sink, coverage_record& record) : m_sink(sink), m_record(record) {}

    bool begin_row(int y, int first, int beyond)
    {
        m_row = y;
        return m_sink.begin_row(y, first, beyond);
    }
    void covers(int x, unsigned length, const int8u* covers)
    {
        m_record.write(m_row, x, length, covers);
        m_sink.covers(x, length, covers);
    }
    void run(int x, unsigned length, int8u cover)
    {
        m_record.write_run(m_row, x, length, cover);
        m_sink.run(x, length, cover);
    }

private:
    Sink& m_sink;
    coverage_record& m_record;
    int m_row = 0;
};
}
