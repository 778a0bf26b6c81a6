// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/Kept.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/Sketch.h"

#include <memory>

using namespace Tovra;

namespace Gallery
{
// A dial's cap of 64 pixels. It is premultiplied like a loaded picture, since that is what the renderer
// leaves in an empty picture.
class Cap
{
public:
    Cap()
    {
        memory.setSize(side, side);
        PelmoAGG renderer;
        renderer.attach(memory.getPixelPtr(), side, side, memory.getRowBytes());
        renderer.noLine();
        renderer.fillLinearGradient(0, 2, 0, 62, {250, 196, 120, 255}, {150, 84, 30, 255}, 1.0);
        renderer.ellipse(32, 32, 30, 30);
        renderer.fillLinearGradient(0, 10, 0, 54, {120, 66, 24, 255}, {240, 170, 90, 255}, 1.0);
        renderer.ellipse(32, 32, 23, 23);
        renderer.fillColor(255, 255, 255, 235);
        renderer.roundedRect(29, 6, 35, 26, 3);
        picture.attachImg(&memory);
    }

    CBitmap& bitmap() { return picture; }

private:
    static constexpr unsigned side = 64;

    CMACBitmap memory;
    CBitmap picture{"", false};
};

static Cap& cap()
{
    static Cap one;
    return one;
}

static void drawAlphas(CDrawContext& context)
{
    double x = 0.0;
    for (int alpha : {255, 192, 128, 64, 0})
    {
        const CRect box(x, 0, x + 64, 64);
        drawPanel(context, box);
        if (alpha == 255)
            cap().bitmap().draw(&context, box, {0, 0});
        else
            cap().bitmap().drawAlphaBlend(&context, box, {0, 0}, static_cast<unsigned char>(alpha));
        drawCaption(context, "alpha " + std::to_string(alpha), {x, 66, x + 70, 80});
        x += 74.0;
    }
    cap().bitmap().draw(&context, {x, 0, x + 64, 32}, {0, 32});
    drawCaption(context, "lower half", {x, 66, x + 70, 80});
}

static void drawFilters(CDrawContext& context)
{
    const char* const names[] = {"none",    "bilinear", "hanning",   "hermite",   "quadric",
                                 "bicubic", "catrom",   "spline 16", "spline 36", "blackman"};
    PelmoAGG& renderer = *context.getAGGRenderer();
    for (int i = 0; i < 10; ++i)
    {
        const double x = i * 61.0;
        const CPoint at = context.getOffset();
        renderer.imageBlendColor(0, 0, 0, 0);
        renderer.imageFilter(ImageFilter(i));
        // The white mark, four times as large.
        renderer.transformImage(cap().bitmap().getImage(), 25, 2, 39, 16, at.x + x, at.y, at.x + x + 56,
                                at.y + 56);
        drawCaption(context, names[i], {x, 58, x + 60, 72});
    }
    renderer.imageFilter(kFilterBilinear);
}

static void drawSmall(CDrawContext& context)
{
    PelmoAGG& renderer = *context.getAGGRenderer();
    const CPoint at = context.getOffset();
    double x = 0.0;
    for (double side : {40.0, 28.0, 20.0, 14.0})
        for (bool resampled : {false, true})
        {
            renderer.imageResample(resampled);
            renderer.transformImage(cap().bitmap().getImage(), 0, 0, 64, 64, at.x + x, at.y + 20 - side / 2,
                                    at.x + x + side, at.y + 20 + side / 2);
            x += side + 8;
        }
    renderer.imageResample(false);
    drawCaption(context, "smaller: plain and resampled", {x + 4, 10, 620, 30});
}

static void drawBlurs(CDrawContext& context)
{
    struct Case
    {
        int radiusX, radiusY;
        const char* name;
    };
    double x = 0.0;
    for (const Case& c : {Case{0, 0, "sharp"},
                          {2, 2, "2"},
                          {6, 6, "6"},
                          {16, 16, "16"},
                          {16, 0, "16 across"},
                          {0, 16, "16 upright"}})
    {
        CRect box(x, 0, x + 92, 84);
        drawPanel(context, box, {24, 26, 31, 255});
        context.setFillColor(accent);
        context.drawEllipse({x + 18, 16, x + 62, 60}, kFilled);
        context.setFillColor(cool);
        context.drawRect({x + 50, 40, x + 76, 66}, kFilled);
        CRect inner(x + 1, 1, x + 90, 82);
        context.blurRect(inner, c.radiusX, c.radiusY);
        drawCaption(context, c.name, {x, 86, x + 92, 100});
        x += 103.0;
    }
}

void fillPictures(CFrame& frame)
{
    frame.addView(new Sketch({16, 46, 632, 130}, drawAlphas));
    frame.addView(new Sketch({16, 140, 632, 214}, drawFilters));
    frame.addView(new Sketch({16, 232, 632, 274}, drawSmall));
    frame.addView(new Sketch({16, 298, 632, 402}, drawBlurs));
}
}
