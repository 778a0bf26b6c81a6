// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CDrawPath.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/DrawnPicture.h"
#include "Tovrane/draw/IOSBitmap.h"

using namespace Tovra;

namespace
{
constexpr Pixel bluePixel{255, 0, 0, 255};
constexpr Pixel redPixel{0, 0, 255, 255};
constexpr Pixel greenPixel{0, 255, 0, 255};

struct ContextTest : testing::Test
{
    ContextTest()
    {
        context.setAGGRenderer(&picture.renderer);
        context.setFrameColor(kRedCColor);
        context.setFillColor(kBlueCColor);
    }

    void clear() { picture.fill(blackPixel); }

    DrawnPicture picture{60, 40};
    CDrawContext context;
};
}

// The gallery shows the known styles.
TEST_F(ContextTest, TakesTheRenderersColoursInAnUnknownStyle)
{
    picture.renderer.fillColor(0, 255, 0);
    picture.renderer.lineColor(255, 255, 255);
    context.setLineWidth(3.0);
    context.drawRect({10, 10, 40, 30}, CDrawStyle(3));
    EXPECT_EQ(picture.at(25, 20), greenPixel);
    EXPECT_EQ(picture.at(25, 9), whitePixel);
}

TEST_F(ContextTest, KeepsTheFormerFontWhenTheNextIsNone)
{
    context.setFont(kNormalFont, 12.0, 0);
    const double regular = context.getStringWidth("Lodex");
    context.setFont(kNormalFont, 0.0, 1);
    EXPECT_GT(context.getStringWidth("Lodex"), regular) << "bold, and the size stays";
    context.setFont(kNormalFont, 12.0, 0);
    CFontDesc none("no such file", nullptr, 99.0, kFontCacheLCD);
    context.setFont(&none, 0.0, 0);
    EXPECT_EQ(context.getStringWidth("Lodex"), regular);
}

TEST_F(ContextTest, KeepsTheClipInThePictureWhenTheOffsetChanges)
{
    context.setOffset({10, 5});
    context.setClipRect({0, 0, 20, 20});
    context.setOffset({12, 5});
    EXPECT_EQ(context.getClipRect(), CRect(-2, 0, 18, 20));
    context.drawRect({-50, -50, 50, 50}, kFilled);
    EXPECT_EQ(picture.at(10, 5), bluePixel);
    EXPECT_EQ(picture.at(29, 24), bluePixel);
    EXPECT_EQ(picture.at(9, 5), blackPixel);
    EXPECT_EQ(picture.at(30, 24), blackPixel);

    context.setFrameColor(kRedCColor); // a filled shape leaves no line colour
    context.moveTo({0, 2.5});
    context.lineTo({10, 2.5});
    context.lineTo({10, 9});
    EXPECT_EQ(picture.at(15, 7), redPixel);
    EXPECT_NEAR(picture.at(12 + 9, 5 + 6).red, 127, 1) << "half of a line that runs between pixels";
}

// The alpha of a path would apply to colours that are set while it is drawn.
TEST_F(ContextTest, APathLeavesTheMasterAlphaAsItWas)
{
    picture.renderer.fillColor(0, 0, 255);
    picture.renderer.masterAlpha(0.7);
    CDrawPath path(&context, 0);
    path.moveTo(0, 0);
    path.lineTo(40, 0);
    path.lineTo(40, 40);
    path.closePath();
    path.finish(kFilled, false);
    EXPECT_EQ(picture.at(30, 10), bluePixel);
    EXPECT_EQ(picture.renderer.masterAlpha(), 0.7);
}

TEST_F(ContextTest, ResetsTheClipToAThousandWithoutAFrame)
{
    context.setOffset({30, 0});
    context.setClipRect({0, 0, 2, 2});
    context.resetClipRect();
    EXPECT_EQ(context.getClipRect(), CRect(-30, 0, 970, 1000)) << "kept without the offset";
    context.drawRect({-30, 0, 100, 100}, kFilled);
    EXPECT_EQ(picture.at(29, 10), blackPixel) << "but the box begins at the offset";
    EXPECT_EQ(picture.at(30, 10), bluePixel);
}

TEST_F(ContextTest, DrawsTextInsideItsRectangleWithoutTheLastRow)
{
    const auto highestAndLowest = [this]
    {
        std::pair<int, int> rows(-1, -1);
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x)
                if (picture.at(x, y) != blackPixel)
                    rows = {rows.first < 0 ? y : rows.first, y};
        return rows;
    };
    context.setFont(kNormalFont, 40.0, 0);
    context.setFontColor(kWhiteCColor);
    context.drawString("MMM", {0, 10, 60, 20}, true, kTextCenter);
    EXPECT_EQ(highestAndLowest(), std::pair(10, 19)) << "the last row of the box, 20, stays free";

    clear();
    context.setClipRect({0, 0, 60, 15});
    context.drawString("MMM", {0, 10, 60, 30}, true, kTextCenter);
    EXPECT_EQ(highestAndLowest().second, 14);

    clear();
    for (const CRect& empty : {CRect(0, 10, 60, 11), CRect(0, 20, 60, 40), CRect(10, 10, 10, 30)})
        context.drawString("MMM", empty, true, kTextCenter);
    EXPECT_EQ(picture.countOther(blackPixel), 0);
    EXPECT_EQ(context.getClipRect(), CRect(0, 0, 60, 15));
    context.drawRect({0, 0, 100, 100}, kFilled);
    EXPECT_EQ(picture.countOther(blackPixel), 60 * 15) << "the clip is as it was";
    gNormalFont.setSize(12.0);
}

TEST_F(ContextTest, GivesColoursBackAfterAText)
{
    PelmoAGG& renderer = picture.renderer;
    renderer.fillLinearGradient(0, 0, 60, 0, {0, 255, 0, 255}, {0, 255, 0, 255}, 1.0);
    renderer.lineColor(1, 2, 3, 200);
    renderer.masterAlpha(0.5);
    context.drawString("x", {0, 0, 60, 40}, true, kTextLeft);
    EXPECT_EQ(renderer.lineColor().a, 200);
    clear();
    renderer.masterAlpha(1.0);
    renderer.noLine();
    renderer.rectangle(0, 0, 60, 40);
    EXPECT_EQ(picture.countOther(greenPixel), 0) << "the gradient is back";
}

TEST_F(ContextTest, DrawsTextInTheLineColourUnlessItIsToldOtherwise)
{
    context.setFont(&gNormalFont_NoLCD, 0.0, 0);
    context.setFontColor(kGreenCColor);
    picture.renderer.lineColor(255, 0, 0);
    for (const auto& [useFontColor, color] : {std::pair(true, greenPixel), {false, redPixel}})
    {
        clear();
        context.drawString("|||||||", {0, 0, 60, 40}, useFontColor, kTextLeft);
        Pixel sum{};
        for (int x = 0; x < 60; ++x)
            sum = {0, sum.green + picture.at(x, 20).green, sum.red + picture.at(x, 20).red, 0};
        EXPECT_EQ(sum.green > 0, color == greenPixel);
        EXPECT_EQ(sum.red > 0, color == redPixel);
    }
}

TEST(CDrawContext, HasTheLeastPictureOfItsOwnWithoutAFrame)
{
    CDrawContext context;
    ASSERT_NE(context.getTargetBitmap(), nullptr);
    EXPECT_EQ(context.getTargetBitmap()->getWidth(), 1u);
    context.drawRect({-1e9, -1e9, 1e9, 1e9}, kFilledAndStroked);
    context.drawString("text", {0, 0, 100, 100});

    context.setAGGRenderer(nullptr);
    EXPECT_EQ(context.getTargetBitmap(), nullptr) << "gone with its renderer";
    context.setFillColor(kRedCColor);
    EXPECT_EQ(context.getFillColor(), kBlackCColor) << "nothing happens without a renderer";
    context.drawEllipse({0, 0, 9, 9}, kFilled);
    context.drawString("text", {0, 0, 100, 100});
    context.resetClipRect();
    context.blit(nullptr);
    EXPECT_EQ(context.getStringWidth("text"), 0.0);
    CDrawPath(&context).finish(kFilled, true);
}
