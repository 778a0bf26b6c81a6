// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/ren_rgba_lcd.h"
#include "Tovrane/lib/scanline_storage_lcd.h"

#include <agg_renderer_base.h>
#include <array>
#include <gtest/gtest.h>
#include <map>
#include <vector>

using Covers = std::vector<agg::int8u>;

namespace
{
struct Span
{
    int x;
    Covers covers;

    bool operator==(const Span&) const = default;
};

void PrintTo(const Span& span, std::ostream* out)
{
    *out << "at " << span.x << " "
         << testing::PrintToString(std::vector<int>(span.covers.begin(), span.covers.end()));
}

const agg::lcd_distribution_lut filter(0.4, 0.2, 0.1);

// The bytes that the font cache gets for one row.
Covers filtered(int y, const std::vector<Span>& spans)
{
    agg::scanline_u8 row;
    row.reset(spans.front().x, spans.back().x + int(spans.back().covers.size()));
    for (const Span& span : spans)
        row.add_cells(span.x, unsigned(span.covers.size()), span.covers.data());
    row.finalize(y);
    agg::scanline_storage_lcd storage(filter);
    storage.prepare();
    storage.render(row);
    Covers bytes(storage.byte_size());
    storage.serialize(bytes.data());
    return bytes;
}

// What a renderer reads back from these bytes.
std::map<int, std::vector<Span>> rows(const Covers& bytes)
{
    std::map<int, std::vector<Span>> found;
    agg::serialized_scanlines_adaptor_aa8 adaptor(bytes.data(), unsigned(bytes.size()), 0.0, 0.0);
    agg::serialized_scanlines_adaptor_aa8::embedded_scanline row;
    for (bool more = adaptor.rewind_scanlines() && adaptor.sweep_scanline(row); more;
         more = adaptor.sweep_scanline(row))
    {
        auto span = row.begin();
        for (unsigned left = row.num_spans(); left > 0; --left)
        {
            found[row.y()].push_back({span->x, Covers(span->covers, span->covers + span->len)});
            if (left > 1)
                ++span;
        }
    }
    return found;
}
}

TEST(scanline_storage_lcd, SpreadsCoverOverFiveThirds)
{
    const struct
    {
        const char* what;
        std::vector<Span> in, out;
    } cases[] = {
        {"a single third", {{10, {255}}}, {{8, {25, 51, 102, 51, 25}}}},
        {"left of the origin", {{-1, {100}}}, {{-3, {10, 20, 40, 20, 10}}}},
        {"an edge", {{3, {255, 255, 255, 255, 255}}}, {{1, {25, 76, 178, 229, 254, 229, 178, 76, 25}}}},
        {"two spans that meet", {{10, {255}}, {12, {255}}}, {{8, {25, 51, 127, 102, 127, 51, 25}}}},
        {"two spans apart", {{0, {255}}, {6, {10}}}, {{-2, {25, 51, 102, 51, 25}}, {4, {1, 2, 4, 2, 1}}}},
        {"too weak for its neighbours", {{0, {4}}}, {{0, {1}}}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(rows(filtered(7, c.in))[7], c.out) << c.what;
    EXPECT_TRUE(rows(filtered(7, {{0, {2}}})).empty()) << "too weak at all";
}

TEST(ren_rgba_lcd, BlendsEachSubpixelIntoTheByteOfItsColour)
{
    using Pixels = std::array<agg::int8u, 8>; // two of blue, green, red, alpha; sub-pixels 0 to 5
    const struct
    {
        const char* what;
        Covers covers;
        int x;
        unsigned alpha;
        Pixels redFirst, blueFirst;
    } cases[] = {
        {"two pixels", {255, 255}, 2, 255, {200, 10, 10, 7, 10, 10, 50, 7}, {10, 10, 50, 7, 200, 10, 10, 7}},
        {"half of both", {128}, 0, 128, {10, 10, 20, 7, 10, 10, 10, 7}, {58, 10, 10, 7, 10, 10, 10, 7}},
        {"clipped",
         Covers(9, 255),
         -3,
         128,
         {105, 55, 30, 7, 105, 55, 30, 7},
         {105, 55, 30, 7, 105, 55, 30, 7}},
    };
    for (const auto& c : cases)
        for (const bool redFirst : {true, false})
        {
            Pixels pixels = {10, 10, 10, 7, 10, 10, 10, 7};
            agg::row_accessor<agg::int8u> buffer(pixels.data(), 2, 1, 8);
            agg::ren_rgba_lcd format(buffer);
            format.red_first(redFirst);
            agg::renderer_base<agg::ren_rgba_lcd> renderer(format);
            const agg::rgba8 color(50, 100, 200, c.alpha);
            renderer.blend_solid_hspan(c.x, 0, int(c.covers.size()), color, c.covers.data());
            EXPECT_EQ(pixels, redFirst ? c.redFirst : c.blueFirst) << c.what;
        }
}

TEST(ren_rgba_lcd, FillsRunsOfOneCoverWithinItsClip)
{
    std::array<agg::int8u, 8> pixels{};
    agg::row_accessor<agg::int8u> buffer(pixels.data(), 2, 1, 8);
    agg::ren_rgba_lcd format(buffer);
    agg::renderer_base<agg::ren_rgba_lcd> renderer(format);
    renderer.clip_box(1, 0, 3, 0);
    renderer.blend_hline(-100, 0, 100, agg::rgba8(255, 255, 255), 255);
    EXPECT_EQ(pixels, (std::array<agg::int8u, 8>{255, 255, 0, 0, 0, 0, 255, 0}));
}
