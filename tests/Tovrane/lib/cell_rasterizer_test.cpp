// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/cell_rasterizer.h"

#include <agg_path_storage.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_scanline_p.h>
#include <agg_scanline_u.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace
{
using Coverage = std::map<std::pair<int, int>, int>; // of the pixels (y, x) that have any

// What a rasteriser finds within the window.
template <class Scanline, class Rasterizer>
Coverage coverage(Rasterizer& rasterizer, const agg::rect_i& window)
{
    Coverage found;
    Scanline row;
    if (!rasterizer.rewind_scanlines())
        return found;
    row.reset(rasterizer.min_x(), rasterizer.max_x());
    while (rasterizer.sweep_scanline(row))
    {
        auto span = row.begin();
        for (unsigned left = row.num_spans(); left > 0; --left, ++span)
            for (int i = 0; i < std::abs(span->len); ++i)
                if (window.hit_test(span->x + i, row.y()))
                    found[{row.y(), span->x + i}] = span->covers[span->len > 0 ? i : 0];
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
    agg::rasterizer_scanline_aa<agg::rasterizer_sl_clip<agg::ras_conv_int>> expected;
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
        const Coverage wanted = coverage<agg::scanline_u8>(expected, window);
        ASSERT_EQ(coverage<agg::scanline_p8>(drawn, window), wanted) << "round " << round;
        pixels += wanted.size();
    }
    EXPECT_GT(pixels, 100000u);
}

TEST(CellRasterizer, ForgetsAShapeThatWasNotSwept)
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
    agg::scanline_p8 row;
    ASSERT_TRUE(rasterizer.rewind_scanlines());
    row.reset(rasterizer.min_x(), rasterizer.max_x());
    ASSERT_TRUE(rasterizer.sweep_scanline(row));
    rasterizer.reset();
    EXPECT_FALSE(rasterizer.rewind_scanlines());
    rasterizer.add_path(square);
    EXPECT_EQ(coverage<agg::scanline_p8>(rasterizer, window).size(), 100u);
}
