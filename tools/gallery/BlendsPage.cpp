// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PelmoAGG.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/Sketch.h"

using namespace Tovra;

namespace Gallery
{
constexpr const char* names[] = {
    "clear",     "src",      "dst",      "src over",   "dst over", "src in",     "dst in",     "src out",
    "dst out",   "src atop", "dst atop", "xor",        "plus",     "minus",      "multiply",   "screen",
    "overlay",   "darken",   "lighten",  "dodge",      "burn",     "hard light", "soft light", "difference",
    "exclusion", "contrast", "invert",   "invert rgb", "alpha"};

// Bands of colour with a disc and a translucent block over them, in the mode.
static void drawCell(CDrawContext& context, BlendMode mode)
{
    const CColor bands[] = {{214, 74, 66, 255}, {230, 190, 80, 255}, {78, 160, 96, 255}, {70, 104, 196, 255}};
    for (int i = 0; i < 4; ++i)
    {
        context.setFillColor(bands[i]);
        context.drawRect({0, i * 11.0, 66, i * 11.0 + 11}, kFilled);
    }
    context.getAGGRenderer()->blendMode(mode);
    context.setFillColor({200, 120, 220, 255});
    context.drawEllipse({6, 5, 40, 39}, kFilled);
    context.setFillColor({120, 220, 230, 128});
    context.drawRect({36, 8, 58, 36}, kFilled);
    context.getAGGRenderer()->blendMode(kBlendAlpha);
    drawCaption(context, names[mode], {0, 45, 76, 60});
}

void fillBlends(CFrame& frame)
{
    constexpr int columns = 8;
    for (int mode = kBlendClear; mode <= kBlendAlpha; ++mode)
    {
        const int column = mode % columns, row = mode / columns;
        const double x = 16.0 + 78.0 * column, y = 48.0 + 90.0 * row;
        frame.addView(new Sketch({x, y, x + 78, y + 64},
                                 [mode](CDrawContext& context) { drawCell(context, BlendMode(mode)); }));
    }
}
}
