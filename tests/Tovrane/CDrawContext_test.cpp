#include "Tovrane/CDrawContext.h"
#include "Tovrane/CDrawPath.h"
#include "Tovrane/CFontDesc.h"
#include "Tovrane/CFrame.h"
#include "Tovrane/DrawnPicture.h"
#include "Tovrane/IBlitTarget.h"
#include "Tovrane/IOSBitmap.h"

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
    CDrawContext context{nullptr, nullptr, nullptr};
};
}

TEST_F(ContextTest, PutsItsColoursInByTheStyle)
{
    struct Case
    {
        int style;
        Pixel inside, edge;
    };
    for (const Case& c : {Case{kStroked, blackPixel, redPixel},
                          {kFilled, bluePixel, blackPixel},
                          {kFilledAndStroked, bluePixel, redPixel},
                          {3, greenPixel, whitePixel}})
        for (int shape = 0; shape < 4; ++shape)
        {
            clear();
            picture.renderer.fillColor(0, 255, 0);
            picture.renderer.lineColor(255, 255, 255);
            context.setLineWidth(3.0);
            const CRect rect(10, 10, 40, 30);
            const auto style = CDrawStyle(c.style);
            if (shape == 0)
                context.drawRect(rect, style);
            else if (shape == 1)
                context.drawRoundRect(rect, 3.0f, style);
            else if (shape == 2)
                context.drawEllipse(rect, style);
            else
                context.drawArc(rect, -170.0f, 340.0f, style);
            EXPECT_EQ(picture.at(25, 20), c.inside) << "style " << c.style << ", shape " << shape;
            EXPECT_EQ(picture.at(25, 9), c.edge) << "style " << c.style << ", shape " << shape;
        }
}

TEST_F(ContextTest, AddsItsOffsetToEverything)
{
    context.setOffset({10, 5});
    context.setClipRect({0, 0, 20, 20});
    EXPECT_EQ(context.getClipRect(), CRect(0, 0, 20, 20));
    context.drawRect({-50, -50, 50, 50}, kFilled);
    EXPECT_EQ(picture.at(10, 5), bluePixel);
    EXPECT_EQ(picture.at(29, 24), bluePixel);
    EXPECT_EQ(picture.at(9, 5), blackPixel);
    EXPECT_EQ(picture.at(30, 24), blackPixel);

    context.setOffset({12, 5});
    EXPECT_EQ(context.getClipRect(), CRect(-2, 0, 18, 20)) << "the clip stays where it was in the picture";

    context.setFrameColor(kRedCColor); // a filled shape leaves no line colour
    context.moveTo({0, 2.5});
    context.lineTo({10, 2.5});
    context.lineTo({10, 9});
    EXPECT_EQ(picture.at(15, 7), redPixel);
    EXPECT_NEAR(picture.at(12 + 9, 5 + 6).red, 127, 1) << "half of a line that runs between pixels";
    context.line(0, 12.5, 4, 12.5);
    EXPECT_EQ(picture.at(13, 17), redPixel);
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

TEST_F(ContextTest, BlursOnPixelCentres)
{
    context.setOffset({10, 10});
    context.drawRect({5, 5, 10, 10}, kFilled);
    CRect rect(0.9, 0.9, 20.9, 20.9);
    context.blurRect(rect, 2, 2);
    EXPECT_GT(picture.at(14, 16).blue, 0);
    EXPECT_EQ(rect, CRect(0.9, 0.9, 20.9, 20.9));
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

TEST_F(ContextTest, TellsTheFontItsSizeAndStyle)
{
    context.setFont(kNormalFont, 0.0, 0);
    EXPECT_EQ(context.getFontSize(), 12.0);
    const double regular = context.getStringWidth("Lodex");
    context.setFont(kNormalFont, 0.0, 1);
    EXPECT_EQ(kNormalFont->getStyle(), 1);
    EXPECT_GT(context.getStringWidth("Lodex"), regular) << "bold";
    context.setFont(kNormalFont, 24.0, 0);
    EXPECT_EQ(kNormalFont->getSize(), 24.0);
    EXPECT_NEAR(context.getStringWidth("Lodex"), 2 * regular, 0.1);
    context.setFont(kNormalFont, 12.0, 0);
    CFontDesc none("no such file", nullptr, 99.0, kFontCacheLCD);
    context.setFont(&none, 0.0, 0);
    EXPECT_EQ(context.getStringWidth("Lodex"), regular) << "the former font stays";
}

TEST_F(ContextTest, FillsAPathWithTheRenderersGradient)
{
    context.setOffset({10, 0});
    picture.renderer.fillLinearGradient(10, 0, 50, 0, {0, 0, 255, 255}, {255, 0, 0, 255}, 1.0);
    picture.renderer.masterAlpha(0.7);
    CDrawPath path(&context, 0);
    path.moveTo(0, 0);
    path.lineTo(40, 0);
    path.lineTo(40, 40);
    path.lineTo(0, 40);
    path.closePath();
    path.finish(kFilled, false);
    EXPECT_EQ(picture.at(9, 20), blackPixel);
    EXPECT_GT(picture.at(11, 20).blue, 240) << "alpha belongs to colours that are set, and none was";
    EXPECT_GT(picture.at(48, 20).red, 240);
    EXPECT_EQ(picture.renderer.masterAlpha(), 0.7);
}

TEST(CDrawContext, HasTheLeastPictureOfItsOwnWithoutAFrame)
{
    CDrawContext context(nullptr, nullptr, nullptr);
    ASSERT_NE(context.getAGGRenderer(), nullptr);
    ASSERT_NE(context.getTargetBitmap(), nullptr);
    EXPECT_EQ(context.getTargetBitmap()->getWidth(), 1u);
    context.drawRect({-1e9, -1e9, 1e9, 1e9}, kFilledAndStroked);
    context.drawString("text", {0, 0, 100, 100});

    context.setAGGRenderer(nullptr);
    EXPECT_EQ(context.getTargetBitmap(), nullptr) << "gone with its renderer";
    context.setFillColor(kRedCColor);
    EXPECT_EQ(context.getFillColor(), kBlackCColor) << "nothing happens without a renderer";
    context.drawRect({0, 0, 9, 9}, kFilled);
    context.drawEllipse({0, 0, 9, 9}, kFilled);
    context.drawString("text", {0, 0, 100, 100});
    context.resetClipRect();
    context.blit(nullptr);
    EXPECT_EQ(context.getStringWidth("text"), 0.0);
    CDrawPath path(&context);
    path.moveTo(0, 0);
    path.closePath();
    path.finish(kFilled, true);
}

TEST(CDrawContext, SharesTheFramesPicture)
{
    const auto frame = new CFrame(CRect(0, 0, 50, 20), nullptr, nullptr);
    frame->idle();
    {
        CDrawContext context(frame, nullptr, nullptr);
        EXPECT_EQ(context.getAGGRenderer(), frame->getRenderer());
        EXPECT_EQ(context.getTargetBitmap(), frame->getFrameBitmap());
        EXPECT_EQ(context.getClipRect(), CRect(0, 0, 50, 20));
        context.setFillColor(kGreenCColor);
        context.drawRect({10, 5, 11, 6}, kFilled);
    }
    IOSBitmap& picture = *frame->getFrameBitmap();
    const unsigned char* const pixel = picture.getPixelPtr() + 5 * picture.getRowBytes() + 10 * 4;
    EXPECT_EQ(pixel[0] + 256 * pixel[1] + 65536 * pixel[2], 65280) << "the frame's own outlives the context";
    frame->close();
    frame->forget();
}

TEST(CDrawContext, ShowsItsPictureOnTheGivenTargetOrItsOwn)
{
    struct Target : IBlitTarget
    {
        void blit(const BlitPicture& picture, const CRect&) override { widths.push_back(picture.width); }
        std::vector<unsigned> widths;
    };
    Target own, other;
    CDrawContext context(nullptr, nullptr, static_cast<IBlitTarget*>(&own));
    context.blit(nullptr);
    context.blit(static_cast<IBlitTarget*>(&other));
    EXPECT_EQ(own.widths.size(), 1u);
    EXPECT_EQ(other.widths.size(), 1u);
}
