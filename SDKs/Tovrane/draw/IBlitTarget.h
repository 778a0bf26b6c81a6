// Where a finished picture is shown: what a platform frame's getSystemWindow() points to, and so what
// reaches IOSBitmap::drawToContext as an untyped context.
//
// The pointer that travels as void* has to be an IBlitTarget*, not a pointer to the class that implements it.
#pragma once

#include "Tovrane/base/CRect.h"

namespace Tovra
{
// 32 bits a pixel: blue, green, red, and an alpha that means nothing to the window.
struct BlitPicture
{
    const unsigned char* pixels; // the first row in memory
    unsigned int width;
    unsigned int height;
    int rowBytes;
    bool flipped; // the first row in memory is the lowest one
};

class IBlitTarget
{
public:
    virtual ~IBlitTarget() = default;
    // [window thread]  Shows the whole picture in target, which is the picture's own size for a frame's
    // picture; another size is scaled. The pixels are read during the call alone.
    virtual void blit(const BlitPicture& picture, const CRect& target) = 0;
};
}
