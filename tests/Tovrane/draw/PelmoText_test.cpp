// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/DrawnPicture.h"

#include <algorithm>
#include <string>

using namespace Tovra;

namespace
{
void setFont(PelmoAGG& renderer, FontCacheType type, double height = 16.0, double angle = 0.0)
{
    const char* data = nullptr;
    long length = 0;
    gNormalFont.setStyle(0);
    ASSERT_TRUE(gNormalFont.getFont(data, length));
    renderer.font("regular", data, length, height, type, angle);
}

// The bounding box of what is not black.
struct Ink
{
    explicit Ink(const DrawnPicture& picture)
    {
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x)
                if (const Pixel p = picture.at(x, y); p.blue + p.green + p.red > 60)
                {
                    left = std::min(left, x);
                    top = std::min(top, y);
                    right = std::max(right, x);
                    bottom = std::max(bottom, y);
                }
    }

    bool any() const { return right >= left; }
    double middle() const { return (left + right + 1) / 2.0; }
    double centre() const { return (top + bottom + 1) / 2.0; }

    int left = 10000, top = 10000, right = -1, bottom = -1;
};

Ink drawn(TextAlignment x, TextAlignment y, double atX, double atY)
{
    DrawnPicture picture(200, 60);
    setFont(picture.renderer, kFontCacheGrey);
    picture.renderer.lineColor(255, 255, 255);
    picture.renderer.noFill();
    picture.renderer.textAlignment(x, y);
    picture.renderer.text(atX, atY, "HHH", false, 0.0, 0.0);
    return Ink(picture);
}
}

TEST(PelmoText, StandsWhereItsAlignmentSays)
{
    const Ink left = drawn(kAlignLeftOrBottom, kAlignLeftOrBottom, 100, 30);
    EXPECT_NEAR(left.left, 101, 1);
    EXPECT_EQ(left.bottom, 29) << "capitals end on the base line";
    EXPECT_NEAR(drawn(kAlignRightOrTop, kAlignCenter, 100, 30).right, 98, 1);
    EXPECT_NEAR(drawn(kAlignCenter, kAlignCenter, 100, 30).middle(), 100, 1);
    EXPECT_NEAR(drawn(kAlignCenter, kAlignCenter, 100, 30).centre(), 31.5, 1.5);
    // The ascender is a little above the capitals.
    EXPECT_NEAR(drawn(kAlignLeftOrBottom, kAlignRightOrTop, 100, 10).top, 13, 1);
}

TEST(PelmoText, ReadsUtf8AndTakesOtherBytesAsTheyAre)
{
    PelmoAGG renderer;
    setFont(renderer, kFontCacheGrey);
    const double umlaut = renderer.textWidth("\xC3\xA4"); // one letter, as wide as an a
    EXPECT_EQ(umlaut, renderer.textWidth("a"));
    EXPECT_EQ(renderer.textWidth("\xE4"), umlaut) << "the same letter in Latin-1";
    EXPECT_GT(renderer.textWidth("\xE2\x82\xAC"), 0.0);
    EXPECT_GT(renderer.textWidth("\xF0\x9F\x8E\xB5"), 0.0) << "beyond the cache: a stand-in";
    for (const char* damaged : {"a\xC3", "a\xE2\x82", "\xFF\xFE", "\x80", "\xF4\x90"})
        EXPECT_GT(renderer.textWidth(damaged), 0.0);
}

TEST(PelmoText, RoundsItsStartButNotTheNudge)
{
    const auto ink = [](double x, bool roundOff, double nudge)
    {
        DrawnPicture picture(60, 30);
        setFont(picture.renderer, kFontCacheGrey);
        picture.renderer.lineColor(255, 255, 255);
        picture.renderer.textAlignment(kAlignLeftOrBottom, kAlignLeftOrBottom);
        picture.renderer.text(x, 20.9, "H", roundOff, nudge, 0.0);
        return picture.memory;
    };
    EXPECT_EQ(ink(10.9, true, 0.0), ink(10.0, true, 0.0));
    EXPECT_NE(ink(10.9, false, 0.0), ink(10.0, false, 0.0));
    EXPECT_EQ(ink(10.9, true, 5.0), ink(15.0, true, 0.0));
}

TEST(PelmoText, LooksTheSameWithinAnyClip)
{
    for (FontCacheType type : {kFontCacheGrey, kFontCacheLCD, kFontCacheOutline})
    {
        DrawnPicture whole(100, 40), part(100, 40);
        for (DrawnPicture* picture : {&whole, &part})
        {
            setFont(picture->renderer, type, 30.0);
            picture->renderer.lineColor(255, 255, 255);
            if (picture == &part)
                picture->renderer.clipBox(20, 10, 60, 30); // columns 20 to 60, for shapes up to 59
            picture->renderer.text(-30, 5, "MMMMMMMMMM", false, 0, 0);
        }
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 100; ++x)
            {
                const int last = type == kFontCacheOutline ? 59 : 60;
                const bool isInside = x >= 20 && x <= last && y >= 10 && y <= last - 30;
                const Pixel expected = isInside ? whole.at(x, y) : blackPixel;
                ASSERT_NEAR(part.at(x, y).red, expected.red, 1) << type << ": " << x << ", " << y;
                ASSERT_NEAR(part.at(x, y).blue, expected.blue, 1) << type << ": " << x << ", " << y;
            }
    }
}

TEST(PelmoText, HasItsSubpixelsInTheOrderOfTheScreen)
{
    const auto draw = [](DrawnPicture& picture, SubpixelOrder order, FontCacheType type)
    {
        setFont(picture.renderer, type);
        picture.renderer.subpixelOrder(order);
        picture.renderer.attach(picture.memory.data(), 60, 30, 60 * 4); // does not change the order
        picture.renderer.lineColor(255, 255, 255);
        picture.renderer.text(5, 5, "Till", false, 0, 0);
    };
    DrawnPicture redFirst(60, 30), blueFirst(60, 30), neither(60, 30), grey(60, 30);
    draw(redFirst, kSubpixelRGB, kFontCacheLCD);
    draw(blueFirst, kSubpixelBGR, kFontCacheLCD);
    draw(neither, kSubpixelNone, kFontCacheLCD);
    draw(grey, kSubpixelRGB, kFontCacheGrey);
    EXPECT_EQ(neither.memory, grey.memory);
    const Ink ink(redFirst);
    const Pixel edge = redFirst.at(ink.left, ink.top + 1); // of the T's bar, which begins within the pixel
    EXPECT_LT(edge.red, edge.blue);
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 60; ++x)
        {
            const Pixel mirrored = blueFirst.at(x, y);
            EXPECT_EQ(redFirst.at(x, y), (Pixel{mirrored.red, mirrored.green, mirrored.blue, 255}));
        }

    for (const auto& [name, order] : {std::pair("rgb", kSubpixelRGB),
                                      {"bgr", kSubpixelBGR},
                                      {"vrgb", kSubpixelNone},
                                      {"vbgr", kSubpixelNone},
                                      {"none", kSubpixelNone},
                                      {"2", kSubpixelBGR},
                                      {"unknown", kSubpixelRGB},
                                      {"", kSubpixelRGB}})
        EXPECT_EQ(subpixelOrderByName(name), order) << name;
}

TEST(PelmoText, AutoHintsSharpenLevelLinesAndKeepTheWidths)
{
    const char* const words = "Attack 12.5 ms";
    const auto topOfZ = [](TextHintsType hints)
    {
        DrawnPicture picture(30, 30);
        setFont(picture.renderer, kFontCacheGrey, 12.0);
        picture.renderer.textHints(hints);
        picture.renderer.lineColor(255, 255, 255);
        picture.renderer.text(5, 5, "z", false, 0, 0);
        const Ink ink(picture);
        return picture.at((ink.left + ink.right) / 2, ink.top).green;
    };
    EXPECT_LT(topOfZ(kNoHints), 128) << "it ends within a pixel";
    EXPECT_GT(topOfZ(kAutoHints), 200);
    PelmoAGG renderer;
    for (FontCacheType type : {kFontCacheGrey, kFontCacheLCD})
        for (double size : {9.0, 10.0, 12.0, 14.0})
        {
            setFont(renderer, type, size);
            renderer.textHints(kNoHints);
            const double width = renderer.textWidth(words);
            renderer.textHints(kAutoHints);
            EXPECT_NEAR(renderer.textWidth(words), width, 0.25) << size;
        }
}

TEST(PelmoText, KeepsItsFontWhenTheNextIsNone)
{
    const std::string noFont(5000, 'x');
    const auto ink = [&noFont](bool asksForAnother)
    {
        DrawnPicture picture(60, 30);
        setFont(picture.renderer, kFontCacheGrey);
        picture.renderer.textWidth("opened");
        if (asksForAnother)
            picture.renderer.font("none", noFont.data(), long(noFont.size()), 30, kFontCacheLCD, 0);
        picture.renderer.text(5, 5, "Wave", false, 0, 0);
        return picture.memory;
    };
    EXPECT_EQ(ink(true), ink(false));
}

TEST(PelmoText, SurvivesAnyFontAndPlace)
{
    DrawnPicture picture(40, 30);
    PelmoAGG& agg = picture.renderer;
    const double values[] = {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, -1e9, 0.0, 0.01, 70000.0};
    for (double height : values)
        for (FontCacheType type : {kFontCacheGrey, kFontCacheLCD, kFontCacheOutline})
            for (double at : values)
            {
                setFont(agg, type, height, at);
                agg.text(at, 20, "Quo vadis", false, at, 1);
                agg.text(20, at, "Quo vadis", true, 0, at);
            }
    agg.font(nullptr, nullptr, 0, 12, kFontCacheLCD, 0);
    agg.text(3, 20, nullptr, false, 0, 0);
    EXPECT_EQ(agg.textWidth(nullptr), 0.0);
    EXPECT_EQ(PelmoAGG().textWidth("no font yet"), 0.0);
}
