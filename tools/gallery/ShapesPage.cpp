// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CDrawPath.h"
#include "Tovrane/views/tree/CViewContainer.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/Sketch.h"

#include <cmath>
#include <numbers>

using namespace Tovra;

namespace Gallery
{
static void drawShape(CDrawContext& context, int shape, const CRect& rect, CDrawStyle style)
{
    switch (shape)
    {
    case 0:
        return context.drawRect(rect, style);
    case 1:
        return context.drawRoundRect(rect, 9.0f, style);
    case 2:
        return context.drawEllipse(rect, style);
    default:
        return context.drawArc(rect, 135.0f, 270.0f, style);
    }
}

static void drawStyles(CDrawContext& context)
{
    const char* const shapes[] = {"rectangle", "round", "ellipse", "arc"};
    const char* const styles[] = {"stroked", "filled", "both"};
    for (int shape = 0; shape < 4; ++shape)
        drawCaption(context, shapes[shape], {64.0 + shape * 76, 0, 132.0 + shape * 76, 16}, kTextCenter);
    for (int style = 0; style < 3; ++style)
    {
        drawCaption(context, styles[style], {0, 22.0 + style * 56, 56, 62.0 + style * 56});
        for (int shape = 0; shape < 4; ++shape)
        {
            context.setLineWidth(2.0);
            context.setFrameColor(ink);
            context.setFillColor(style == 1 ? cool : CColor{56, 110, 140, 255});
            const double x = 68.0 + shape * 76, y = 22.0 + style * 56;
            drawShape(context, shape, {x, y, x + 60, y + 40}, CDrawStyle(style));
        }
    }
    context.setLineWidth(1.0);
}

static void drawLines(CDrawContext& context)
{
    double y = 6.0;
    for (double width : {0.25, 0.5, 1.0, 1.5, 2.0, 3.0, 5.0, 8.0})
    {
        context.setLineWidth(width);
        context.setFrameColor(ink);
        context.line(0, y + 0.5, 90, y + 0.5);
        drawCaption(context, std::to_string(width).substr(0, 4), {98, y - 8, 140, y + 9});
        y += 19.0;
    }
    context.setLineWidth(1.0);
}

static void drawFan(CDrawContext& context)
{
    for (int i = 0; i <= 18; ++i)
    {
        const double angle = i * std::numbers::pi / 36;
        context.setFrameColor(i % 6 == 0 ? accent : faint);
        context.line(0.5, 150.5, 0.5 + 145 * std::cos(angle), 150.5 - 145 * std::sin(angle));
    }
}

static void star(CDrawPath& path, double x, double y, double radius)
{
    for (int i = 0; i < 10; ++i)
    {
        const double angle = i * std::numbers::pi / 5 - std::numbers::pi / 2;
        const double r = i % 2 ? radius * 0.42 : radius;
        const auto px = float(x + r * std::cos(angle)), py = float(y + r * std::sin(angle));
        i == 0 ? path.moveTo(px, py) : path.lineTo(px, py);
    }
    path.closePath();
}

static void drawPaths(CDrawContext& context)
{
    int i = 0;
    for (CDrawStyle style : {kStroked, kFilled, kFilledAndStroked})
    {
        context.setFrameColor(ink);
        context.setFillColor(i == 1 ? leaf : CColor{160, 110, 44, 255});
        context.setLineWidth(1.5);
        CDrawPath path(&context);
        star(path, 38.0 + i++ * 84, 40, 34);
        path.finish(style, false);
    }
    context.setLineWidth(1.0);
}

static void drawGlass(CDrawContext& context)
{
    const CColor colors[] = {{230, 90, 80, 150}, {90, 190, 110, 150}, {90, 130, 235, 150}};
    for (int i = 0; i < 3; ++i)
    {
        const double angle = i * 2 * std::numbers::pi / 3 - std::numbers::pi / 2;
        const double x = 62 + 24 * std::cos(angle), y = 62 + 24 * std::sin(angle);
        context.setFillColor(colors[i]);
        context.drawEllipse({x - 32, y - 32, x + 32, y + 32}, kFilled);
    }
}

static void drawDials(CDrawContext& context)
{
    for (int i = 0; i < 5; ++i)
    {
        const CRect ring(4.0 + i * 48, 4, 40.0 + i * 48, 40);
        context.setLineWidth(4.0);
        context.setFrameColor(edge);
        context.drawArc(ring, 135.0f, 270.0f, kStroked);
        context.setFrameColor(accent);
        context.drawArc(ring, 135.0f, float(30 + 60 * i), kStroked);
    }
    context.setLineWidth(1.0);
}

void fillShapes(CFrame& frame)
{
    frame.addView(new Sketch({16, 44, 400, 230}, drawStyles));
    frame.addView(new Sketch({16, 244, 176, 400}, drawLines));
    frame.addView(new Sketch({450, 44, 630, 200}, drawFan));
    frame.addView(new Sketch({200, 250, 460, 330}, drawPaths));
    frame.addView(new Sketch({200, 345, 460, 400}, drawDials));
    frame.addView(new Sketch({488, 256, 620, 386}, drawGlass));
}
}
