// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/Sketch.h"

using namespace Tovra;

namespace Gallery
{
constexpr const char* words = "Attack 12.5 ms, hold 1/8T, release \xE2\x88\x92"
                              "3.0 dB";

static void drawSizes(CDrawContext& context, CFontDesc& font, CColor color)
{
    double y = 0.0;
    for (long style : {0, 1})
        for (double size : {9.0, 10.0, 11.0, 12.0, 14.0})
        {
            context.setFont(&font, size, style);
            context.setFontColor(color);
            context.drawString(words, {0, y, 300, y + size + 6}, true, kTextLeft);
            y += size + 5.0;
        }
    font.setSize(12.0);
}

static void drawOnLight(CDrawContext& context)
{
    drawPanel(context, {0, 0, 300, 54}, {226, 228, 232, 255});
    double y = 4.0;
    for (long style : {0, 1})
    {
        drawText(context, words, {10, y, 300, y + 22}, kTextLeft, {30, 32, 36, 255}, 12.0, style);
        y += 24.0;
    }
}

static void drawHinted(CDrawContext& context, CFontDesc& font)
{
    PelmoAGG& renderer = *context.getAGGRenderer();
    renderer.textHints(kAutoHints);
    context.setFont(&font, 12.0, 0);
    context.setFontColor(ink);
    context.drawString((std::string("Light hints: ") + words).c_str(), {0, 0, 300, 18}, true, kTextLeft);
    renderer.textHints(kNoHints);
}

static void drawAlignments(CDrawContext& context)
{
    const char* const names[] = {"left", "centre", "right"};
    for (int i = 0; i < 3; ++i)
    {
        const CRect box(i * 102.0, 0, i * 102.0 + 94, 26);
        drawPanel(context, box);
        drawText(context, names[i], {box.left + 6, box.top, box.right - 6, box.bottom}, CHoriTxtAlign(i));
    }
    const CRect narrow(0, 34, 94, 60);
    drawPanel(context, narrow);
    drawText(context, "cut where its box ends", {narrow.left + 6, 34, narrow.right - 6, 60});
    const CRect low(102, 34, 300, 60);
    drawPanel(context, low);
    drawText(
        context,
        "\xC3\x84\xC3\x96\xC3\x9C \xC3\xA9\xC3\xA8\xC3\xA7 \xC3\xB1 \xC3\xB8 \xC5\x81 \xE2\x82\xAC \xC2\xB5s",
        {low.left + 6, 34, low.right, 60});
}

static void drawLarge(CDrawContext& context)
{
    PelmoAGG& renderer = *context.getAGGRenderer();
    const char* data = nullptr;
    long length = 0;
    kNormalFont->setStyle(1);
    if (!kNormalFont->getFont(data, length))
        return;
    const CPoint at = context.getOffset();
    renderer.font("outlines", data, length, 44.0, kFontCacheOutline, 0.0);
    renderer.textAlignment(kAlignLeftOrBottom, kAlignCenter);
    renderer.lineWidth(1.0);
    renderer.lineColor(245, 166, 66, 255);
    renderer.noFill();
    renderer.text(at.x, at.y + 22, "Outline", false, 0, 0);
    renderer.noLine();
    renderer.fillLinearGradient(at.x + 178, 0, at.x + 290, 0, {245, 166, 66, 255}, {84, 176, 214, 255}, 1.0);
    renderer.text(at.x + 178, at.y + 22, "Filled", false, 0, 0);
    renderer.font("outlines", data, length, 15.0, kFontCacheOutline, -0.22);
    renderer.fillColor(222, 225, 231);
    renderer.text(at.x + 330, at.y + 42, "turned around its start", false, 0, 0);
    context.setFont(kNormalFont, 12.0, 0);
}

void fillTexts(CFrame& frame)
{
    const auto caption = [&frame](const char* text, double x, double y)
    {
        frame.addView(new Sketch({x, y, x + 300, y + 16},
                                 [text](CDrawContext& context) {
                                     drawCaption(context, text, {0, 0, 300, 16});
                                 }));
    };
    caption("in thirds of a pixel", 16, 42);
    frame.addView(new Sketch({16, 62, 316, 240}, [](CDrawContext& c) { drawSizes(c, gNormalFont, ink); }));
    caption("in grey", 330, 42);
    frame.addView(
        new Sketch({330, 62, 630, 240}, [](CDrawContext& c) { drawSizes(c, gNormalFont_NoLCD, ink); }));
    frame.addView(new Sketch({16, 236, 316, 254}, [](CDrawContext& c) { drawHinted(c, gNormalFont); }));
    frame.addView(
        new Sketch({330, 236, 630, 254}, [](CDrawContext& c) { drawHinted(c, gNormalFont_NoLCD); }));
    frame.addView(new Sketch({16, 262, 316, 320}, drawOnLight));
    frame.addView(new Sketch({330, 262, 632, 324}, drawAlignments));
    frame.addView(new Sketch({16, 346, 632, 410}, drawLarge));
}
}
