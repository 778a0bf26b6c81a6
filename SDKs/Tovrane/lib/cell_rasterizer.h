// SPDX-License-Identifier: GPL-3.0-or-later
// Turns polygons into the coverage of pixels: what agg::rasterizer_scanline_aa answers for the pixels of a
// window, to the bit, and nothing for others.
//
// A line leaves its share of each pixel that it passes, a cell: the height it crosses (cover) and the area
// to its left. Both are sums, in which order does not count: so the cells of a row are kept as a list, and
// are added up in a row of the window's width when the row is asked for; AGG sorts all of them. Lines and
// rows outside the window are passed over, and cells beside it shrink into one column on either side.
//
// The filling rule is non-zero.
#pragma once

#include <agg_rasterizer_sl_clip.h>
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

namespace agg
{
// [window thread]  One thread at a time. Its memory is kept from shape to shape.
class cell_rasterizer
{
public:
    cell_rasterizer() { clip_box(0.0, 0.0, 0.0, 0.0); }

    // The box at which shapes are cut, as with AGG: with edges rounded to 1/256 of a pixel. It lies between
    // -farthest and farthest, so that the products of two coordinates fit their numbers.
    static constexpr double farthest = 8192.0;
    void clip_box(double x1, double y1, double x2, double y2);
    // That box, in 1/256 of a pixel.
    const rect_i& clip() const { return m_clip; }
    // The pixels that are wanted; all four edges are inside. It is empty at first.
    void window(const rect_i& pixels);

    // A point of a path, in 1/256 of a pixel, and AGG's command for it.
    struct point
    {
        int x;
        int y;
        unsigned command;
    };
    static point point_at(double x, double y, unsigned command)
    {
        if (!is_vertex(command))
            return {0, 0, command};
        return {ras_conv_int::upscale(x), ras_conv_int::upscale(y), command};
    }

    // Forgets all lines.
    void reset();
    // Adds a path of AGG's.
    template <class Vertices>
    void add_path(Vertices& path, unsigned path_id = 0)
    {
        double x = 0.0;
        double y = 0.0;
        path.rewind(path_id);
        for (unsigned command; !is_stop(command = path.vertex(&x, &y));)
            add_point(point_at(x, y, command));
    }
    void add_point(const point& next);

    // Closes the last polygon and gives the shape's coverage to a sink, row by row from the top:
    //   bool begin_row(int y, int first, int beyond)  no pixel of the row lies outside these
    //   void covers(int x, unsigned length, const int8u* covers)
    //   void run(int x, unsigned length, int8u cover)
    // from left to right, and nothing for pixels without coverage. Pixels that touch come together, but if
    // begin_row answers true, a long run of one cover comes by itself. Afterwards no lines are left.
    template <class Sink>
    void sweep(Sink&& sink)
    {
        close_polygon();
        for (int y = m_first_row; y <= m_last_row; ++y)
            if (gather(y))
                spread(sink, sink.begin_row(y, left_of(m_first_word), left_of(m_last_word + 1)));
        reset();
    }

    // For agg::rasterizer_sl_clip: a line in 1/256 of a pixel.
    void line(int x1, int y1, int x2, int y2);

private:
    // Cover in the upper half and area in the lower one, which may have borrowed from it: both are added at
    // once.
    class sums
    {
    public:
        sums() = default;
        sums(int cover, int area) : m_both(std::int64_t(cover) * (std::int64_t(1) << 32) + area) {}

        void operator+=(const sums& other) { m_both += other.m_both; }
        int area() const { return std::int32_t(m_both); }
        int cover() const { return int((m_both - area()) >> 32); }
        bool is_zero() const { return m_both == 0; }

    private:
        std::int64_t m_both = 0;
    };
    // A column counts from the one to the left of the window.
    struct cell
    {
        sums sum;
        int column;
        unsigned next; // of the row
    };

    static constexpr unsigned none = ~0u;
    static constexpr size_t fewest_cells = 1024;
    static constexpr size_t most_cells = fewest_cells << 12;
    static constexpr int shortest_run = 8; // that is worth a call of its own
    static constexpr int slack = 8;        // covers are written eight at a time

    void close_polygon();
    void upright_line(int x, int y1, int y2);
    void slanted_line(int x1, int y1, int x2, int y2);
    void row_line(int row, int x1, int y1, int x2, int y2);
    void long_row_line(int row, int x1, int y1, int x2, int y2);
    void add(int x, int row, int cover, int area);
    bool grow();
    bool gather(int row);

    static unsigned coverage(int area)
    {
        const int cover = area >> (poly_subpixel_shift + 1);
        return unsigned(std::min(cover < 0 ? -cover : cover, int(cover_full)));
    }

    // The first pixel of the window whose column is in a word of marks or in a later one.
    int left_of(size_t word) const { return std::max(m_window.x1, m_window.x1 - 1 + int(word) * 64); }

    // Collects the covers of pixels that touch.
    template <class Sink>
    class span
    {
    public:
        span(Sink& sink, int8u* covers, int left)
            : to(sink), row(covers), origin(left), begin(left), end(left)
        {
        }
        ~span() { flush(); }

        void add(int x, int length, unsigned cover)
        {
            if (x != end)
            {
                flush();
                begin = x;
            }
            const std::uint64_t several = cover * 0x0101010101010101u;
            for (int i = 0; i < length; i += slack)
                std::memcpy(row + (x - origin) + i, &several, sizeof several);
            end = x + length;
        }
        void add_run(int x, int length, unsigned cover)
        {
            flush();
            to.run(x, unsigned(length), int8u(cover));
            begin = end = x + length;
        }

    private:
        void flush()
        {
            if (begin != end)
                to.covers(begin, unsigned(end - begin), row + (begin - origin));
        }

        Sink& to;
        int8u* row;
        int origin, begin, end;
    };

    template <class Sink>
    void spread(Sink& sink, bool has_runs)
    {
        span<Sink> pixels(sink, m_covers.data(), m_window.x1);
        const int shortest = has_runs ? shortest_run : std::numeric_limits<int>::max();
        int cover = 0;
        int x = m_window.x1; // up to which the row is done
        for (size_t word = m_first_word; word <= m_last_word; ++word)
        {
            for (std::uint64_t bits = m_marks[word]; bits != 0; bits &= bits - 1)
            {
                const size_t column = word * 64 + size_t(std::countr_zero(bits));
                const int at = m_window.x1 - 1 + int(column);
                const sums sum = m_sums[column];
                m_sums[column] = sums();
                if (cover != 0 && at > x)
                    if (const unsigned alpha = coverage(cover << (poly_subpixel_shift + 1)))
                        at - x < shortest ? pixels.add(x, at - x, alpha) : pixels.add_run(x, at - x, alpha);
                cover += sum.cover();
                x = std::max(at, m_window.x1);
                if (sum.area() == 0)
                    continue;
                if (const unsigned alpha = coverage((cover << (poly_subpixel_shift + 1)) - sum.area()))
                    pixels.add(at, 1, alpha);
                x = at + 1;
            }
            m_marks[word] = 0;
        }
    }

    rasterizer_sl_clip<ras_conv_int> m_clipper;
    rect_i m_clip{0, 0, 0, 0};
    rect_i m_window{0, 0, -1, -1};
    int m_start_x = 0;
    int m_start_y = 0;
    bool m_is_open = false; // the polygon has a line and is not closed

    std::vector<unsigned> m_heads; // the first cell of each row of the window; none between shapes
    std::vector<cell> m_cells;
    unsigned m_count = 0; // of those in use
    int m_first_row = 0;
    int m_last_row = -1; // with cells

    std::vector<int8u> m_covers;        // of the row being swept
    std::vector<sums> m_sums;           // of the row being swept; 0 between rows
    std::vector<std::uint64_t> m_marks; // one bit for each of them that has a cell
    size_t m_first_word = 0;
    size_t m_last_word = 0;
};
}
