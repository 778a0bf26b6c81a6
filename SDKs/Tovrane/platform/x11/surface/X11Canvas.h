// SPDX-License-Identifier: GPL-3.0-or-later
// A picture of the toolkit's own for a small window: a menu, a text field.
#pragma once

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/platform/x11/surface/X11Picture.h"

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
    // To draw from here until show.
    CDrawContext& context();
    void show(const X11Window& window) { picture.show(window, picture.whole()); }
    void showAgain(const X11Window& window, const X11Place& part) { picture.showAgain(window, part); }

private:
    X11Picture picture;
    PelmoAGG renderer;
    CDrawContext* const drawing;
};
}
