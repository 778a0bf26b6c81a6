// SPDX-License-Identifier: GPL-3.0-or-later
// A picture of the toolkit's own for a small window: a menu, a text field.
#pragma once

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/platform/x11/surface/X11Surface.h"

namespace Tovra
{
// [window thread]
class X11Canvas
{
public:
    explicit X11Canvas(std::shared_ptr<X11Connection> server);
    ~X11Canvas();
    X11Canvas(const X11Canvas&) = delete;
    X11Canvas& operator=(const X11Canvas&) = delete;

    // Empties it. Without memory for it nothing is drawn or shown.
    void setSize(int width, int height);
    CDrawContext& context() { return *drawing; }
    void show(const X11Window& window);
    void showAgain(const X11Window& window, const X11Place& part) { surface.showAgain(window, part); }

private:
    CMACBitmap bitmap;
    PelmoAGG renderer;
    CDrawContext* const drawing;
    X11Surface surface;
};
}
