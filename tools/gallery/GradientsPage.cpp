// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CDrawPath.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/Sketch.h"

#include <cmath>

using namespace Tovra;

namespace Gallery
{
static const agg::rgba8 amber{245, 166, 66, 255};
static const agg::rgba8 night{28, 46, 78, 255};
static const agg::rgba8 sky{84, 176, 214, 255};

// Gradients are in the coordinates of the picture.
static CRect inPicture(const CDrawContext& context, CRect rect)
{
    return rect.offset(context.getOffset());
}

static void fillRect(CDrawContext& context, const CRect& rect)
{
    CDrawPath path(&context);
    path.moveTo(float(rect.left), float(rect.top));
    path.lineTo(float(rect.right), float(rect.top));
    path.lineTo(float(rect.right), float(rect.bottom));
    path.lineTo(float(rect.left), float(rect.bottom));
    path.closePath();
    path.finish(kFilled, false);
}

static void drawProfiles(CDrawContext& context)
{
    PelmoAGG& renderer = *context.getAGGRenderer();
    double y = 0.0;
    for (double profile : {1.0, 0.8, 0.5, 0.25, 0.1})
    {
        const CRect band(96, y, 300, y + 20);
        const CRect at = inPicture(context, band);
        drawCaption(context, "profile " + std::to_string(profile).substr(0, 4), {0, y, 90, y + 20});
        renderer.fillLinearGradient(at.left, 0, at.right, 0, night, amber, profile);
        fillRect(context, band);
        y += 25.0;
    }
}

static void drawDirections(CDrawContext& context)
{
    PelmoAGG& renderer = *context.getAGGRenderer();
    const CPoint ends[] = {{1, 0}, {0, 1}, {1, 1}, {-1, 1}, {0, -1}};
    for (int i = 0; i < 5; ++i)
    {
        const CRect box(i * 58.0, 0, i * 58.0 + 50, 50);
        const CPoint middle = inPicture(context, box).center();
        const double dx = ends[i].x * 25, dy = ends[i].y * 25;
        renderer.fillLinearGradient(middle.x - dx, middle.y - dy, middle.x + dx, middle.y + dy, night, sky,
                                    amber);
        fillRect(context, box);
    }
}

static void drawFades(CDrawContext& context)
{
    PelmoAGG& renderer = *context.getAGGRenderer();
    for (int i = 0; i < 36; ++i)
        for (int j = 0; j < 6; ++j)
        {
            context.setFillColor((i + j) % 2 ? CColor{58, 61, 69, 255} : CColor{44, 47, 54, 255});
            context.drawRect({i * 8.0, j * 8.0, i * 8.0 + 8, j * 8.0 + 8}, kFilled);
        }
    const CRect band(8, 6, 280, 42);
    const CRect at = inPicture(context, band);
    renderer.fillLinearGradient(at.left, 0, at.right, 0, {84, 176, 214, 0}, {84, 176, 214, 255},
                                {245, 166, 66, 0});
    fillRect(context, band);
}

static void drawMasterAlphas(CDrawContext& context)
{
    PelmoAGG& renderer = *context.getAGGRenderer();
    double y = 0.0;
    for (double alpha : {1.0, 0.5, 0.2})
    {
        const CRect band(96, y, 300, y + 20);
        const CRect at = inPicture(context, band);
        drawCaption(context, "master " + std::to_string(alpha).substr(0, 3), {0, y, 90, y + 20});
        renderer.masterAlpha(alpha);
        renderer.fillLinearGradient(at.left, 0, at.right, 0, amber, amber, amber);
        fillRect(context, band);
        renderer.masterAlpha(1.0);
        y += 25.0;
    }
}

// Knobs: a light rim, a dark ring, and a cap.
static void drawKnobs(CDrawContext& context)
{
    PelmoAGG& renderer = *context.getAGGRenderer();
    const CPoint at = context.getOffset();
    renderer.noLine();
    for (int i = 0; i < 4; ++i)
    {
        const double x = at.x + 36 + i * 72, y = at.y + 36;
        const auto disc = [&](double radius, agg::rgba8 top, agg::rgba8 bottom)
        {
            renderer.fillLinearGradient(0, y - radius, 0, y + radius, top, bottom, 1.0);
            renderer.ellipse(x, y, radius, radius);
        };
        const auto shade = unsigned(40 + i * 40);
        disc(34, {90, 96, 108, 255}, {22, 24, 28, 255});
        disc(32, {20, 22, 26, 255}, {62, 66, 76, 255});
        disc(24, {shade + 70, shade + 60, shade + 50, 255}, {shade, shade - 10, shade - 20, 255});
        disc(22, {shade + 20, shade + 10, shade, 255}, {shade + 60, shade + 50, shade + 40, 255});
    }
}

static double envelope(double x)
{
    if (x < 0.15)
        return 1.0 - std::pow(x / 0.15, 0.6);
    return x < 0.3 ? 0.0 : 1.0 - std::pow(1.0 - (x - 0.3) / 0.7, 2.2);
}

static void drawEnvelope(CDrawContext& context)
{
    const CRect box(0, 0, 606, 128);
    drawPanel(context, box, {24, 26, 31, 255});
    for (int beat = 1; beat < 8; ++beat)
    {
        context.setFrameColor(panel);
        const double x = std::floor(box.right * beat / 8) + 0.5;
        context.line(x, 1, x, box.bottom - 1);
    }
    const CRect at = inPicture(context, box);
    PelmoAGG& renderer = *context.getAGGRenderer();
    renderer.fillLinearGradient(0, at.top + 8, 0, at.bottom, {245, 166, 66, 230}, {200, 90, 60, 130},
                                {60, 40, 60, 40});
    renderer.lineColor(255, 205, 140, 255);
    renderer.lineWidth(1.5);
    for (bool stroke : {false, true})
    {
        CDrawPath path(&context);
        path.moveTo(1.0f, stroke ? 12.0f : 127.0f);
        for (int x = 1; x <= 605; ++x)
            path.lineTo(float(x), float(122 - 110 * envelope((x - 1) / 604.0)));
        if (!stroke)
            path.lineTo(605.0f, 127.0f);
        if (!stroke)
            path.closePath();
        path.finish(stroke ? kStroked : kFilled, false);
    }
    renderer.lineWidth(1.0);
}

void fillGradients(CFrame& frame)
{
    frame.addView(new Sketch({16, 48, 330, 180}, drawProfiles));
    frame.addView(new Sketch({340, 48, 632, 110}, drawDirections));
    frame.addView(new Sketch({340, 118, 632, 174}, drawFades));
    frame.addView(new Sketch({340, 188, 632, 264}, drawKnobs));
    frame.addView(new Sketch({16, 190, 330, 268}, drawMasterAlphas));
    frame.addView(new Sketch({16, 276, 632, 410}, drawEnvelope));
}
}
