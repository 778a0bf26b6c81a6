// SPDX-License-Identifier: GPL-3.0-or-later
// Shows finished pictures. A platform frame's getSystemWindow() points to one, and passes it on to
// IOSBitmap::drawToContext as a void*.
//
// The pointer that is converted to void* has to be an IBlitTarget*, not one to the implementing class.
#pragma once

#include "Tovrane/base/CRect.h"

namespace Tovra
{
// 32 bits a pixel: blue, green, red, and an alpha that the window ignores.
struct BlitPicture
{
    const unsigned char* pixels; // the first row in memory
    unsigned int width;
    unsigned int height;
    int rowBytes;
    bool flipped; // whether the first row in memory is the lowest one
};

class IBlitTarget
{
public:
    virtual ~IBlitTarget() = default;
    // [window thread]  Shows the whole picture in target, which is in pixels; scaled if target has another
    // size. For a frame's picture it has the same. The pixels are only read during the call.
    virtual void blit(const BlitPicture& picture, const CRect& target) = 0;
};
}
