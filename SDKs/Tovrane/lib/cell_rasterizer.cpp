// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/cell_rasterizer.h"

namespace agg
{
namespace
{
constexpr int scale = poly_subpixel_scale;
constexpr int mask = poly_subpixel_mask;

int whole(int v)
{
    return v >> poly_subpixel_shift;
}

// Cuts a distance into steps that are as equal as whole numbers can be: each is the quotient, rounded down,
// and one more as often as the remainders add up to the divisor.
class even_steps
{
public:
    // The first step, which may be shorter than the others, is first / by; by is above 0.
    even_steps(int first, int by) : divisor(by), next(floor(first)), left(first - next * by) {}

    int first() const { return next; }
    // From here on the steps are each / by.
    void continue_with(int each)
    {
        next = floor(each);
        rest = each - next * divisor;
    }
    int step()
    {
        left += rest;
        if (left < divisor)
            return next;
        left -= divisor;
        return next + 1;
    }

private:
    int floor(int number) const { return number / divisor - (number % divisor < 0 ? 1 : 0); }

    int divisor;
    int next;
    int left;
    int rest = 0;
};
}

void cell_rasterizer::clip_box(double x1, double y1, double x2, double y2)
{
    reset();
    const auto near = [](double v) { return ras_conv_int::upscale(std::clamp(v, -farthest, farthest)); };
    m_clip = {near(x1), near(y1), near(x2), near(y2)};
    m_clipper.clip_box(m_clip.x1, m_clip.y1, m_clip.x2, m_clip.y2);
}

void cell_rasterizer::window(const rect_i& pixels)
{
    reset();
    m_window = pixels;
    reset();
    const size_t columns = size_t(std::max(pixels.x2 - pixels.x1 + 1, 0)) + 2;
    const size_t rows = size_t(std::max(pixels.y2 - pixels.y1 + 1, 0));
    if (m_heads.size() < rows)
        m_heads.resize(rows, none);
    if (m_sums.size() < columns)
    {
        m_sums.resize(columns);
        m_covers.resize(columns + slack);
        m_marks.resize(columns / 64 + 1, 0);
    }
}

void cell_rasterizer::reset()
{
    for (int row = m_first_row; row <= m_last_row; ++row)
        m_heads[size_t(row - m_window.y1)] = none;
    m_count = 0;
    m_first_row = m_window.y2 + 1;
    m_last_row = m_window.y1 - 1;
    m_is_open = false;
}

void cell_rasterizer::add_point(const point& next)
{
    if (is_move_to(next.command))
    {
        close_polygon();
        m_start_x = next.x;
        m_start_y = next.y;
        m_clipper.move_to(next.x, next.y);
    }
    else if (is_vertex(next.command))
    {
        m_clipper.line_to(*this, next.x, next.y);
        m_is_open = true;
    }
    else if (is_close(next.command))
        close_polygon();
}

void cell_rasterizer::close_polygon()
{
    if (!m_is_open)
        return;
    m_clipper.line_to(*this, m_start_x, m_start_y);
    m_is_open = false;
}

void cell_rasterizer::line(int x1, int y1, int x2, int y2)
{
    const int first = whole(y1);
    const int last = whole(y2);
    if (std::max(first, last) < m_window.y1 || std::min(first, last) > m_window.y2)
        return;
    m_first_row = std::min(m_first_row, std::max(std::min(first, last), m_window.y1));
    m_last_row = std::max(m_last_row, std::min(std::max(first, last), m_window.y2));
    if (first == last)
        row_line(first, x1, y1 & mask, x2, y2 & mask);
    else if (x1 == x2)
        upright_line(x1, y1, y2);
    else
        slanted_line(x1, y1, x2, y2);
}

void cell_rasterizer::upright_line(int x, int y1, int y2)
{
    const int last = whole(y2);
    const int onward = y2 > y1 ? 1 : -1;
    const int entry = y2 > y1 ? 0 : scale; // of a row
    row_line(whole(y1), x, y1 & mask, x, scale - entry);
    for (int row = whole(y1) + onward; row != last; row += onward)
        row_line(row, x, entry, x, scale - entry);
    row_line(last, x, entry, x, y2 & mask);
}

void cell_rasterizer::slanted_line(int x1, int y1, int x2, int y2)
{
    const int last = whole(y2);
    const bool isDown = y2 > y1;
    const int onward = isDown ? 1 : -1;
    const int entry = isDown ? 0 : scale; // of a row, and where it is left
    const int exit = scale - entry;
    even_steps steps((isDown ? scale - (y1 & mask) : y1 & mask) * (x2 - x1), std::abs(y2 - y1));
    int x = x1 + steps.first();
    row_line(whole(y1), x1, y1 & mask, x, exit);
    int row = whole(y1) + onward;
    if (row != last)
        steps.continue_with(scale * (x2 - x1));
    for (; row != last; row += onward)
    {
        const int from = x;
        x += steps.step();
        row_line(row, from, entry, x, exit);
    }
    row_line(last, x, entry, x2, y2 & mask);
}

// Within one row; y is from 0 to the scale.
inline void cell_rasterizer::row_line(int row, int x1, int y1, int x2, int y2)
{
    if (y1 == y2 || row < m_window.y1 || row > m_window.y2)
        return;
    const int first = whole(x1);
    const int last = whole(x2);
    if (first == last || std::max(first, last) < m_window.x1 || std::min(first, last) > m_window.x2)
        add(last, row, y2 - y1, ((x1 & mask) + (x2 & mask)) * (y2 - y1));
    else
        long_row_line(row, x1, y1, x2, y2);
}

// Through several pixels.
void cell_rasterizer::long_row_line(int row, int x1, int y1, int x2, int y2)
{
    const int last = whole(x2);
    const bool isRight = x2 > x1;
    const int onward = isRight ? 1 : -1;
    const int entry = isRight ? 0 : scale; // of a pixel, and where it is left
    const int exit = scale - entry;
    const int height = y2 - y1;
    even_steps steps((isRight ? scale - (x1 & mask) : x1 & mask) * height, std::abs(x2 - x1));
    int y = y1 + steps.first();
    add(whole(x1), row, y - y1, ((x1 & mask) + exit) * (y - y1));
    int x = whole(x1) + onward;
    if (x != last)
        steps.continue_with(scale * height);
    for (; x != last; x += onward)
    {
        const int step = steps.step();
        add(x, row, step, scale * step);
        y += step;
    }
    add(last, row, y2 - y, ((x2 & mask) + entry) * (y2 - y));
}

inline void cell_rasterizer::add(int x, int row, int cover, int area)
{
    const int columns = m_window.x2 - m_window.x1 + 1;
    int column = x - m_window.x1 + 1;
    if (column < 1 || column > columns)
    {
        column = column < 1 ? 0 : columns + 1;
        area = 0;
    }
    const sums share(cover, area);
    unsigned& head = m_heads[size_t(row - m_window.y1)];
    if (head != none && m_cells[head].column == column)
    {
        m_cells[head].sum += share;
        return;
    }
    if (share.is_zero() || (m_count == m_cells.size() && !grow()))
        return;
    cell& made = m_cells[m_count];
    made.sum = share;
    made.column = column;
    made.next = head;
    head = m_count++;
}

// False for a shape of too many cells, which stays incomplete.
bool cell_rasterizer::grow()
{
    if (m_cells.size() >= most_cells)
        return false;
    m_cells.resize(m_cells.size() + std::max(m_cells.size(), fewest_cells));
    return true;
}

// Adds up the cells of a row. False if there are none.
bool cell_rasterizer::gather(int row)
{
    unsigned& head = m_heads[size_t(row - m_window.y1)];
    if (head == none)
        return false;
    m_first_word = m_marks.size() - 1;
    m_last_word = 0;
    for (unsigned i = head; i != none; i = m_cells[i].next)
    {
        const cell& from = m_cells[i];
        const size_t word = size_t(from.column) / 64;
        m_sums[size_t(from.column)] += from.sum;
        m_marks[word] |= std::uint64_t(1) << (from.column & 63);
        m_first_word = std::min(m_first_word, word);
        m_last_word = std::max(m_last_word, word);
    }
    head = none;
    return true;
}
}
