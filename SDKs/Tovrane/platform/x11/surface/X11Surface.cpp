// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/surface/X11Surface.h"

#include "Tovrane/platform/parts/ScaledCopy.h"

namespace Tovra
{
void X11Surface::show(const X11Window& window, const BlitPicture& picture, const X11Place& target)
{
    if (window.isGone() || picture.pixels == nullptr || picture.width == 0 || picture.height == 0 ||
        !copy.setSize(unsigned(target.width), unsigned(target.height)))
        return;
    auto* const pixels = reinterpret_cast<std::uint32_t*>(copy.getPixelPtr());
    if (int(picture.width) == target.width && int(picture.height) == target.height)
        copyPicture(picture, pixels);
    else
        scalePicture(picture, pixels, target.width, target.height);
    copy.show(window, copy.whole(), target.x, target.y);
}
}
