// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/surface/X11Canvas.h"

namespace Tovra
{
X11Canvas::X11Canvas(std::shared_ptr<X11Connection> server)
    : drawing(new CDrawContext()), surface(std::move(server))
{
}

X11Canvas::~X11Canvas()
{
    drawing->forget();
}

void X11Canvas::setSize(int width, int height)
{
    bitmap.setSize(unsigned(width), unsigned(height));
    renderer.attach(bitmap.getPixelPtr(), bitmap.getWidth(), bitmap.getHeight(), bitmap.getRowBytes());
    drawing->setAGGRenderer(&renderer);
    drawing->setTargetBitmap(&bitmap);
    drawing->setClipRect(CRect(0.0, 0.0, width, height));
}

void X11Canvas::show(const X11Window& window)
{
    const BlitPicture picture{bitmap.getPixelPtr(), bitmap.getWidth(), bitmap.getHeight(),
                              bitmap.getRowBytes(), bitmap.isFlipped()};
    surface.show(window, picture, {0, 0, int(picture.width), int(picture.height)});
}
}
