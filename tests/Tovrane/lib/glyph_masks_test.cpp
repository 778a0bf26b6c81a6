// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/lib/glyph_masks.h"
#include "Tovrane/lib/ren_rgba_lcd.h"

#include <agg_renderer_base.h>
#include <agg_renderer_scanline.h>
#include <gtest/gtest.h>
#include <random>

namespace
{
constexpr int width = 40;
constexpr int height = 30;

// A picture with the glyph in it, drawn by whole pixels or by AGG's way from the engine's spans.
class Pictures
{
public:
    void useFont(double size)
    {
        const char* data = nullptr;
        long length = 0;
        ASSERT_TRUE(Tovra::gNormalFont.getFont(data, length));
        ASSERT_TRUE(engine.load_font("regular", 0, agg::glyph_ft2_lcd, data, length));
        engine.flip_y(true);
        ASSERT_TRUE(engine.height(size));
    }

    struct Place
    {
        unsigned code;
        int thirds, y;
        agg::rect_i clip;
        agg::rgba8 color;
        bool redFirst;
    };

    const std::vector<agg::int8u>& byMasks(const Place& place)
    {
        clear();
        masks.red_first(place.redFirst);
        agg::masked_glyph* const glyph = masks.glyph(place.code);
        const int x = (place.thirds + 300) / 3 - 100;
        masks.phase(*glyph, unsigned(place.thirds - x * 3))
            .for_each_row(x, place.y, place.clip,
                          [&](int left, int y, unsigned length, const agg::int8u* covers)
                          { lcd.blend_pixels(left, y, length, place.color, covers); });
        return memory;
    }

    const std::vector<agg::int8u>& bySpans(const Place& place)
    {
        clear();
        agg::font_cache_manager<agg::font_engine_ft2_lcd> spans(engine);
        lcd.red_first(place.redFirst);
        agg::renderer_base<agg::ren_rgba_lcd> base(lcd);
        base.clip_box_naked(place.clip.x1 * 3, place.clip.y1, place.clip.x2 * 3 + 2, place.clip.y2);
        const agg::glyph_cache* const glyph = spans.glyph(place.code);
        spans.init_embedded_adaptors(glyph, place.thirds, place.y);
        if (glyph->bounds.x1 < glyph->bounds.x2)
            agg::render_scanlines_aa_solid(spans.gray8_adaptor(), spans.gray8_scanline(), base, place.color);
        return memory;
    }

private:
    void clear()
    {
        for (size_t i = 0; i < memory.size(); ++i)
            memory[i] = agg::int8u(i * 7);
        rows.attach(memory.data(), width, height, width * 4);
        lcd.attach(rows);
    }

    agg::font_engine_ft2_lcd engine;
    agg::glyph_masks masks{engine};
    std::vector<agg::int8u> memory = std::vector<agg::int8u>(width * height * 4);
    agg::row_accessor<agg::int8u> rows;
    agg::ren_rgba_lcd lcd;
};
}

TEST(GlyphMasks, DrawWhatTheEnginesSpansDrawAtEachThirdOfAPixel)
{
    Pictures pictures;
    std::mt19937 engine(1);
    const auto number = [&](int from, int below) { return from + int(engine() % unsigned(below - from)); };
    for (int round = 0; round < 3000; ++round)
    {
        if (round % 500 == 0)
            pictures.useFont(7.5 + round / 100);
        const int left = number(0, width), top = number(0, height);
        const agg::rgba8 color(unsigned(number(0, 256)), unsigned(number(0, 256)), unsigned(number(0, 256)),
                               round % 2 ? 255 : unsigned(number(0, 256)));
        const Pictures::Place place{unsigned(number(32, 300)),
                                    number(-30, width * 3),
                                    number(-4, height + 8),
                                    {left, top, number(left, width), number(top, height)},
                                    color,
                                    round % 100 < 50};
        const auto masks = pictures.byMasks(place);
        ASSERT_EQ(masks, pictures.bySpans(place)) << "round " << round << ", character " << place.code;
    }
}

TEST(GlyphMasks, KernAsTheEngineDoes)
{
    agg::font_engine_ft2_lcd engine;
    const char* data = nullptr;
    long length = 0;
    ASSERT_TRUE(Tovra::gNormalFont.getFont(data, length));
    ASSERT_TRUE(engine.load_font("regular", 0, agg::glyph_ft2_gray8, data, length));
    ASSERT_TRUE(engine.height(20.0));
    agg::glyph_masks masks(engine);
    int kerned = 0;
    for (int again = 0; again < 2; ++again)
        for (unsigned first = 'A'; first <= 'z'; ++first)
            for (unsigned second = 'A'; second <= 'z'; ++second)
            {
                masks.begin_text();
                const unsigned left = masks.glyph(first)->index, right = masks.glyph(second)->index;
                double x = 3.0, y = 0.0, expected = 3.0;
                masks.add_kerning(&x, &y);
                kerned += engine.add_kerning(left, right, &expected, &y) && expected != 3.0;
                ASSERT_EQ(x, expected) << char(first) << char(second);
            }
    EXPECT_GT(kerned, 100);
}
