// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/DrawnPicture.h"
#include "support/Realtime.h"

using namespace Tovra;

static void drawTexts(CDrawContext& context)
{
    for (CFontDesc* font : {&gNormalFont, &gNormalFont_NoLCD})
        for (double size : {10.0, 12.0, 15.0})
            for (long style : {0, 1})
            {
                context.setFont(font, size, style);
                context.drawString("Attack 12.5 ms, -3.0 dB \xC3\xBC", {0, 0, 200, 40}, true, kTextCenter);
                context.drawString("Release", {0, 40, 200, 80}, false, kTextRight);
            }
}

TEST(TextRealtime, DrawsFromAWarmCacheWithoutAllocating)
{
    DrawnPicture picture(200, 80);
    CDrawContext context;
    context.setAGGRenderer(&picture.renderer);
    drawTexts(context);
    picture.fill(blackPixel);

    RealtimeWindow window;
    drawTexts(context);
    EXPECT_EQ(window.allocations(), 0);
    EXPECT_GT(picture.countOther(blackPixel), 100);
}

TEST(TextRealtime, DrawsShapesAndPicturesAgainWithoutAllocating)
{
    DrawnPicture picture(200, 80), stamp(50, 50);
    PelmoAGG& agg = picture.renderer;
    const auto draw = [&]
    {
        agg.fillLinearGradient(0, 0, 200, 0, {1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12});
        agg.ellipse(100, 40, 90, 30);
        agg.roundedRect(3, 3, 190, 70, 20);
        agg.blendImage(stamp.image(), 20, 20, 128);
    };
    draw();
    draw(); // shapes are kept from the second time on
    RealtimeWindow window;
    draw();
    EXPECT_EQ(window.allocations(), 0);
}
