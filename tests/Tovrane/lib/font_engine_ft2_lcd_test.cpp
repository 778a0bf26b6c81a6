// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/font_engine_ft2_lcd.h"
#include "resources/FontResources.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

using agg::font_engine_ft2_lcd;

namespace
{
// Widths for which the editor's layout was made, in 2048ths of an em.
constexpr double em = 2048.0;
constexpr double advanceOfA = 1366.0, advanceOfBoldA = 1479.0;
constexpr double kerningOfAV = -152.0;

const std::string& face(const char* name)
{
    static const auto read = [](const char* of)
    { return Orbel::readResource(fontResources().data, fontResources().size, of).value(); };
    static const std::string regular = read("arial.ttf"), bold = read("arialbd.ttf");
    return std::string(name) == "arial.ttf" ? regular : bold;
}

bool load(font_engine_ft2_lcd& engine, const char* name, agg::glyph_ft2_lcd_type type)
{
    return engine.load_font(name, 0, type, face(name).data(), long(face(name).size()));
}
}

TEST(font_engine_ft2_lcd, HasTheWidthsOfTheLayout)
{
    for (const double size : {9.0, 12.0, 12.5, 100.0})
        for (const auto type :
             {agg::glyph_ft2_mono, agg::glyph_ft2_gray8, agg::glyph_ft2_lcd, agg::glyph_ft2_outline})
        {
            SCOPED_TRACE(testing::Message() << "size " << size << ", type " << type);
            font_engine_ft2_lcd engine;
            ASSERT_TRUE(load(engine, "arial.ttf", type));
            ASSERT_TRUE(engine.height(size));
            ASSERT_TRUE(engine.prepare_glyph('A'));
            EXPECT_NEAR(engine.advance_x(), advanceOfA / em * size, 1.0 / 64);
            const unsigned a = engine.glyph_index();
            ASSERT_TRUE(engine.prepare_glyph('V'));
            double x = 5.0, y = 5.0;
            EXPECT_TRUE(engine.add_kerning(a, engine.glyph_index(), &x, &y));
            EXPECT_NEAR(x, 5.0 + kerningOfAV / em * size, 1.0 / 64);
            EXPECT_EQ(y, 5.0);
            EXPECT_FALSE(engine.add_kerning(0, a, &x, &y));
            ASSERT_TRUE(load(engine, "arialbd.ttf", type));
            ASSERT_TRUE(engine.prepare_glyph('A'));
            EXPECT_NEAR(engine.advance_x(), advanceOfBoldA / em * size, 1.0 / 64);
        }
}

TEST(font_engine_ft2_lcd, SpacesInWholePixelsWithTheFontsOwnHintsAlone)
{
    font_engine_ft2_lcd engine;
    engine.height(12.0);
    ASSERT_TRUE(load(engine, "arial.ttf", agg::glyph_ft2_gray8));
    for (const auto& [mode, advance, kerning] : {std::tuple(agg::glyph_ft2_hint_none, 6.67, -0.89),
                                                 {agg::glyph_ft2_hint_native, 7.0, 0.0},
                                                 {agg::glyph_ft2_hint_auto, 6.67, -0.89}})
    {
        engine.hinting(mode);
        ASSERT_TRUE(engine.prepare_glyph('A'));
        const unsigned a = engine.glyph_index();
        ASSERT_TRUE(engine.prepare_glyph('V'));
        double x = 0.0, y = 0.0;
        EXPECT_TRUE(engine.add_kerning(a, engine.glyph_index(), &x, &y));
        EXPECT_NEAR(x, kerning, 0.01) << mode;
        ASSERT_TRUE(engine.prepare_glyph('n'));
        EXPECT_NEAR(engine.advance_x(), advance, 0.01) << mode;
    }
}

TEST(font_engine_ft2_lcd, NamesItsCacheAfterAllThatShapesGlyphs)
{
    font_engine_ft2_lcd engine;
    ASSERT_TRUE(load(engine, "arial.ttf", agg::glyph_ft2_lcd));
    engine.height(12.0);
    engine.flip_y(true);
    EXPECT_STREQ(engine.font_signature(), "arial.ttf,1970170211,0,2,0:768x0,0,1"
                                          ",00030000000000000000000"
                                          "0FFFF00000000000000000000"
                                          ",0.400000,0.200000,0.100000");
    std::string last = engine.font_signature();
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"size", [&] { engine.height(12.5); }},
        {"width", [&] { engine.width(20.0); }},
        {"hinting", [&] { engine.hinting(agg::glyph_ft2_hint_auto); }},
        {"flip", [&] { engine.flip_y(false); }},
        {"type", [&] { load(engine, "arial.ttf", agg::glyph_ft2_gray8); }},
        {"face", [&] { load(engine, "arialbd.ttf", agg::glyph_ft2_gray8); }},
    };
    for (const auto& [what, change] : changes)
    {
        change();
        EXPECT_NE(std::exchange(last, engine.font_signature()), engine.font_signature()) << what;
    }

    const int stamp = engine.change_stamp();
    engine.height(12.5);
    engine.hinting(agg::glyph_ft2_hint_auto);
    load(engine, "arialbd.ttf", agg::glyph_ft2_gray8);
    EXPECT_EQ(engine.change_stamp(), stamp) << "nothing changed";
}

TEST(font_engine_ft2_lcd, RefusesWhatIsNoFontOrNoSize)
{
    font_engine_ft2_lcd engine;
    EXPECT_FALSE(engine.prepare_glyph('A')) << "without a face";
    EXPECT_EQ(engine.ascender(), 0.0);
    const std::string garbage(1000, 'x');
    EXPECT_FALSE(engine.load_font(nullptr, 0, agg::glyph_ft2_gray8, garbage.data(), 1000));
    EXPECT_FALSE(engine.load_font("none", 0, agg::glyph_ft2_gray8, nullptr, 0)) << "neither memory nor file";
    ASSERT_TRUE(load(engine, "arial.ttf", agg::glyph_ft2_gray8));
    EXPECT_FALSE(engine.prepare_glyph('A')) << "without a size";
    engine.height(12.0);
    for (const long length : {1000L, 0L, -1L})
        EXPECT_FALSE(engine.load_font("garbage", 0, agg::glyph_ft2_lcd, garbage.data(), length));
    EXPECT_TRUE(engine.prepare_glyph('A')) << "the former face stays";
    for (const double size : {0.0, -12.0, 1001.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(engine.height(size)) << size;
    EXPECT_EQ(engine.height(), 12.0);
    EXPECT_TRUE(engine.prepare_glyph(0x10ffff)) << "the stand-in of the face";
    EXPECT_EQ(engine.glyph_index(), 0u);
}

TEST(font_engine_ft2_lcd, KeepsFacesByName)
{
    font_engine_ft2_lcd engine(1);
    engine.height(12.0);
    for (int turn = 0; turn < 3; ++turn)
    {
        ASSERT_TRUE(load(engine, "arial.ttf", agg::glyph_ft2_gray8));
        ASSERT_TRUE(engine.load_font("arial.ttf", 0, agg::glyph_ft2_lcd, "no font", 7)) << "is known";
        EXPECT_TRUE(engine.prepare_glyph('A'));
        ASSERT_TRUE(load(engine, "arialbd.ttf", agg::glyph_ft2_gray8)) << "there is room for one";
        EXPECT_TRUE(engine.prepare_glyph('A'));
    }
    EXPECT_NEAR(engine.ascender(), 12.0 * 1854 / 2355, 1e-9) << "of a line's height";
}
