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
template <class Number>
class even_steps
{
public:
    // The first step, which may be shorter than the others, is first / by; by is above 0.
    even_steps(Number first, Number by) : divisor(by), next(floor(first)), left(first - next * by) {}

    int first() const { return int(next); }
    // From here on the steps are each / by.
    void continue_with(Number each)
    {
        next = floor(each);
        rest = each - next * divisor;
    }
    int step()
    {
        left += rest;
        if (left < divisor)
            return int(next);
        left -= divisor;
        return int(next) + 1;
    }

private:
    Number floor(Number number) const
    {
        const Number quotient = number / divisor;
        return quotient - (number % divisor < 0 ? 1 : 0);
    }

    Number divisor;
    Number next;
    Number left;
    Number rest = 0;
};
}

void cell_rasterizer::clip_box(double x1, double y1, double x2, double y2)
{
    reset();
    m_clipper.clip_box(ras_conv_int::upscale(x1), ras_conv_int::upscale(y1), ras_conv_int::upscale(x2),
                       ras_conv_int::upscale(y2));
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
        m_sums.resize(columns, {0, 0});
        m_marks.resize(columns / 64 + 1, 0);
    }
}

void cell_rasterizer::reset()
{
    for (int row = m_first_row; row <= m_last_row; ++row)
        m_heads[size_t(row - m_window.y1)] = none;
    m_cells.clear();
    m_first_row = m_window.y2 + 1;
    m_last_row = m_window.y1 - 1;
    m_is_open = false;
}

void cell_rasterizer::add_vertex(double x, double y, unsigned command)
{
    if (is_move_to(command))
    {
        close_polygon();
        m_start_x = ras_conv_int::upscale(x);
        m_start_y = ras_conv_int::upscale(y);
        m_clipper.move_to(m_start_x, m_start_y);
    }
    else if (is_vertex(command))
    {
        m_clipper.line_to(*this, ras_conv_int::upscale(x), ras_conv_int::upscale(y));
        m_is_open = true;
    }
    else if (is_close(command))
        close_polygon();
}

void cell_rasterizer::close_polygon()
{
    if (!m_is_open)
        return;
    m_clipper.line_to(*this, m_start_x, m_start_y);
    m_is_open = false;
}

bool cell_rasterizer::rewind_scanlines()
{
    close_polygon();
    m_row = m_first_row;
    return m_first_row <= m_last_row;
}

void cell_rasterizer::line(int x1, int y1, int x2, int y2)
{
    const int last = whole(y2);
    int row = whole(y1);
    if (std::max(row, last) < m_window.y1 || std::min(row, last) > m_window.y2)
        return;
    if (row == last)
        return row_line(row, x1, y1 & mask, x2, y2 & mask);
    if (x1 == x2)
        return steep_line(x1, y1, y2);

    const bool isDown = y2 > y1;
    const std::int64_t dx = std::int64_t(x2) - x1;
    const int entry = isDown ? 0 : scale; // of a row, and where it is left
    const int exit = scale - entry;
    const int onward = isDown ? 1 : -1;
    even_steps<std::int64_t> steps((isDown ? scale - (y1 & mask) : y1 & mask) * dx,
                                   std::abs(std::int64_t(y2) - y1));
    int x = x1 + steps.first();
    row_line(row, x1, y1 & mask, x, exit);
    steps.continue_with(scale * dx);
    for (row += onward; row != last; row += onward)
    {
        const int from = x;
        x += steps.step();
        row_line(row, from, entry, x, exit);
    }
    row_line(last, x, entry, x2, y2 & mask);
}

// Straight down or up.
void cell_rasterizer::steep_line(int x, int y1, int y2)
{
    const int onward = y2 > y1 ? scale : -scale;
    const int last = whole(y2);
    const int entry = onward > 0 ? 0 : scale;
    row_line(whole(y1), x, y1 & mask, x, scale - entry);
    for (int row = whole(y1) + onward / scale; row != last; row += onward / scale)
        row_line(row, x, entry, x, scale - entry);
    row_line(last, x, entry, x, y2 & mask);
}

// Within one row; y is from 0 to the scale.
void cell_rasterizer::row_line(int row, int x1, int y1, int x2, int y2)
{
    if (y1 == y2 || row < m_window.y1 || row > m_window.y2)
        return;
    const int last = whole(x2);
    int x = whole(x1);
    if (x == last || std::max(x, last) < m_window.x1 || std::min(x, last) > m_window.x2)
        return add(last, row, y2 - y1, ((x1 & mask) + (x2 & mask)) * (y2 - y1));

    const bool isRight = x2 > x1;
    const int entry = isRight ? 0 : scale; // of a pixel, and where it is left
    const int exit = scale - entry;
    const int onward = isRight ? 1 : -1;
    const int height = y2 - y1;
    even_steps<int> steps((isRight ? scale - (x1 & mask) : x1 & mask) * height, std::abs(x2 - x1));
    int y = y1 + steps.first();
    add(x, row, y - y1, ((x1 & mask) + exit) * (y - y1));
    steps.continue_with(scale * height);
    for (x += onward; x != last; x += onward)
    {
        const int step = steps.step();
        add(x, row, step, scale * step);
        y += step;
    }
    add(last, row, y2 - y, ((x2 & mask) + entry) * (y2 - y));
}

void cell_rasterizer::add(int x, int row, int cover, int area)
{
    const bool isBeside = x < m_window.x1 || x > m_window.x2;
    const int column = std::clamp(x, m_window.x1 - 1, m_window.x2 + 1) - (m_window.x1 - 1);
    unsigned& head = m_heads[size_t(row - m_window.y1)];
    if (isBeside)
        area = 0;
    if (head != none && m_cells[head].column == column)
    {
        m_cells[head].cover += cover;
        m_cells[head].area += area;
        return;
    }
    if ((cover | area) == 0 || m_cells.size() >= most_cells)
        return;
    m_cells.push_back({column, cover, area, head});
    head = unsigned(m_cells.size() - 1);
    m_first_row = std::min(m_first_row, row);
    m_last_row = std::max(m_last_row, row);
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
        m_sums[size_t(from.column)].cover += from.cover;
        m_sums[size_t(from.column)].area += from.area;
        m_marks[word] |= std::uint64_t(1) << (from.column & 63);
        m_first_word = std::min(m_first_word, word);
        m_last_word = std::max(m_last_word, word);
    }
    head = none;
    return true;
}
}
