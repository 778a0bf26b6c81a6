// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/cell_rasterizer.h"

#include <agg_path_storage.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_scanline_u.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace
{
using Coverage = std::map<std::pair<int, int>, int>; // of the pixels (y, x) that have any

struct Collector
{
    Coverage& found;
    bool hasRuns;
    int row = 0, from = 0, to = 0;

    bool begin_row(int y, int first, int beyond)
    {
        row = y;
        from = first;
        to = beyond;
        return hasRuns;
    }
    void covers(int x, unsigned length, const agg::int8u* covers)
    {
        EXPECT_TRUE(from <= x && x + int(length) <= to);
        for (unsigned i = 0; i < length; ++i)
            found[{row, x + int(i)}] = covers[i];
    }
    void run(int x, unsigned length, agg::int8u cover)
    {
        EXPECT_TRUE(hasRuns && from <= x && x + int(length) <= to);
        for (unsigned i = 0; i < length; ++i)
            found[{row, x + int(i)}] = cover;
    }
};

Coverage coverage(agg::cell_rasterizer& rasterizer, bool hasRuns)
{
    Coverage found;
    rasterizer.sweep(Collector{found, hasRuns});
    return found;
}

// What AGG's rasteriser finds within the window.
using AggRasterizer = agg::rasterizer_scanline_aa<agg::rasterizer_sl_clip<agg::ras_conv_int>>;

Coverage coverage(AggRasterizer& rasterizer, const agg::rect_i& window)
{
    Coverage found;
    agg::scanline_u8 row;
    if (!rasterizer.rewind_scanlines())
        return found;
    row.reset(rasterizer.min_x(), rasterizer.max_x());
    while (rasterizer.sweep_scanline(row))
    {
        auto span = row.begin();
        for (unsigned left = row.num_spans(); left > 0; --left, ++span)
            for (int i = 0; i < span->len; ++i)
                if (window.hit_test(span->x + i, row.y()))
                    found[{row.y(), span->x + i}] = span->covers[i];
    }
    return found;
}

class Shapes
{
public:
    // Triangles and longer polygons, some with edges on whole pixels, some far outside of the picture.
    agg::path_storage path()
    {
        agg::path_storage made;
        for (int polygon = 1 + number(3); polygon > 0; --polygon)
        {
            const double grain = number(3) == 0 ? 256.0 : 1.0;
            const double reach = number(8) == 0 ? 100000.0 : 60.0;
            double x = coordinate(reach, grain), y = coordinate(reach, grain);
            made.move_to(x, y);
            for (int corner = 1 + number(12); corner > 0; --corner)
            {
                x = number(4) == 0 ? x : coordinate(reach, grain);
                y = number(4) == 0 ? y : coordinate(reach, grain);
                made.line_to(x, y);
            }
            if (number(2) == 0)
                made.close_polygon();
        }
        return made;
    }
    agg::rect_d clip()
    {
        return {coordinate(10, 1), coordinate(10, 1), 48 + coordinate(20, 1), 40 + coordinate(20, 1)};
    }
    agg::rect_i window()
    {
        const int x = number(40), y = number(40);
        return {x, y, x + number(30), y + number(30)};
    }

private:
    int number(int below) { return int(engine() % unsigned(below)); }
    double coordinate(double reach, double grain)
    {
        const double steps = std::floor((double(engine()) / 4294967296.0 - 0.3) * reach * 256.0 / grain);
        return steps * grain / 256.0 + (grain == 1.0 ? 0.001 : 0.0);
    }

    std::mt19937 engine{1};
};
}

TEST(CellRasterizer, CoversAPixelAsAggDoes)
{
    Shapes shapes;
    agg::cell_rasterizer drawn;
    AggRasterizer expected;
    size_t pixels = 0;
    for (int round = 0; round < 3000; ++round)
    {
        const agg::rect_d clip = shapes.clip();
        const agg::rect_i window = shapes.window();
        agg::path_storage path = shapes.path();
        drawn.window(window);
        drawn.clip_box(clip.x1, clip.y1, clip.x2, clip.y2);
        expected.clip_box(clip.x1, clip.y1, clip.x2, clip.y2);
        drawn.add_path(path);
        expected.add_path(path);
        const Coverage wanted = coverage(expected, window);
        ASSERT_EQ(coverage(drawn, round % 2 == 0), wanted) << "round " << round;
        pixels += wanted.size();
    }
    EXPECT_GT(pixels, 100000u);
}

TEST(CellRasterizer, ForgetsAShape)
{
    agg::cell_rasterizer rasterizer;
    const agg::rect_i window{0, 0, 19, 19};
    rasterizer.window(window);
    rasterizer.clip_box(0.0, 0.0, 20.0, 20.0);
    agg::path_storage square;
    square.move_to(2.0, 2.0);
    square.line_to(12.0, 2.0);
    square.line_to(12.0, 12.0);
    square.line_to(2.0, 12.0);
    rasterizer.add_path(square);
    rasterizer.reset();
    EXPECT_TRUE(coverage(rasterizer, true).empty());
    rasterizer.add_path(square);
    EXPECT_EQ(coverage(rasterizer, true).size(), 100u);
    EXPECT_TRUE(coverage(rasterizer, true).empty());
}
