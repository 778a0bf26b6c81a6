// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/surface/X11Canvas.h"

namespace Tovra
{
X11Canvas::X11Canvas(std::shared_ptr<X11Connection> server)
    : picture(std::move(server)), drawing(new CDrawContext())
{
}

X11Canvas::~X11Canvas()
{
    drawing->forget();
}

void X11Canvas::setSize(int width, int height)
{
    picture.setSize(unsigned(width), unsigned(height));
    renderer.attach(picture.getPixelPtr(), picture.getWidth(), picture.getHeight(), picture.getRowBytes());
    drawing->setAGGRenderer(&renderer);
    drawing->setTargetBitmap(&picture);
    drawing->setClipRect(CRect(0.0, 0.0, width, height));
}

CDrawContext& X11Canvas::context()
{
    picture.beginDrawing();
    return *drawing;
}
}
