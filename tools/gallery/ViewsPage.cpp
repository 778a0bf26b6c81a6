// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/CViewContainer.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/Sketch.h"

using namespace Tovra;

namespace Gallery
{
static Sketch* badge(const CRect& rect, const char* text, CColor color)
{
    const CRect all(0, 0, rect.getWidth(), rect.getHeight());
    return new Sketch(rect,
                      [all, text, color](CDrawContext& context)
                      {
                          context.setFillColor(color);
                          context.drawRoundRect(all, 8.0f, kFilled);
                          drawText(context, text, all, kTextCenter, ground, 12.0, 1);
                      });
}

static CViewContainer* box(const CRect& rect, CColor color)
{
    const auto container = new CViewContainer(rect);
    container->setBackgroundColor(color);
    return container;
}

// Nested boxes at fractions of a pixel: the content of each begins at the next lower whole pixel.
static CViewContainer* nest(int depth, const CRect& rect)
{
    const CColor shades[] = {{50, 54, 62, 255}, {66, 71, 82, 255}, {84, 90, 104, 255}, {104, 112, 128, 255}};
    CViewContainer* const container = box(rect, shades[depth]);
    if (depth < 3)
        container->addView(nest(depth + 1, {20.4, 20.7, rect.getWidth() - 20, rect.getHeight() - 20}));
    else
        container->addView(badge({10.3, 10.6, 110.3, 36.6}, "innermost", accent));
    return container;
}

static CViewContainer* cutter()
{
    CViewContainer* const container = box({0, 0, 180, 140}, panel);
    container->addView(badge({-30, -14, 70, 30}, "cut", cool));
    container->addView(badge({120, 40, 240, 84}, "cut", leaf));
    container->addView(badge({40, 112, 140, 170}, "cut", accent));
    container->addView(badge({50, 48, 112, 76}, "whole", ink));
    container->addView(badge({300, 10, 380, 40}, "outside", kRedCColor));
    return container;
}

void fillViews(CFrame& frame)
{
    frame.addView(nest(0, {16.5, 48.25, 316.5, 248.25}));
    CViewContainer* const cut = cutter();
    cut->setViewSize({350, 60, 530, 200}, false);
    frame.addView(cut);

    CViewContainer* const shadows = box({350, 224, 620, 400}, panel);
    shadows->addView(badge({20, 20, 140, 70}, "below", cool));
    shadows->addView(badge({90, 46, 210, 100}, "above", accent));
    Sketch* const hidden = badge({20, 120, 120, 160}, "hidden", kRedCColor);
    hidden->setVisible(false);
    shadows->addView(hidden);
    frame.addView(shadows);

    CViewContainer* const clear = box({16, 270, 316, 400}, panel);
    CViewContainer* const glass = box({30, 30, 270, 100}, kRedCColor);
    glass->setTransparency(true);
    glass->addView(badge({10, 14, 230, 56}, "in a transparent container", leaf));
    clear->addView(glass);
    frame.addView(clear);
}
}
