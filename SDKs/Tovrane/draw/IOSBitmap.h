// A picture in memory that the window system can show: 32 bits a pixel, blue, green, red, alpha.
//
// The frame's backing picture and every bitmap are drawn into one of these; CMACBitmap is the one there is.
// One thread at a time.
#pragma once

#include "Tovrane/base/CRect.h"

#include <cstdint>

namespace Tovra
{
class IOSBitmap
{
public:
    IOSBitmap() = default;
    IOSBitmap(const IOSBitmap&) = delete;
    IOSBitmap& operator=(const IOSBitmap&) = delete;

    virtual ~IOSBitmap() = default;
    // Null while there are no pixels. Row y begins getRowBytes() x y bytes behind it.
    virtual unsigned char* getPixelPtr() = 0;
    // Drops the pixels and makes new ones, all zero; a width or height of 0 becomes 1. False, and no pixels
    // with a size of 0 x 0, if there is no memory or more than 64 MiB would be needed.
    virtual bool setSize(unsigned int w, unsigned int h) = 0;
    virtual void destroy() = 0;
    // [window thread]  Shows the whole picture in target, or at its own size at (0, 0) for null. context is
    // an IBlitTarget*. Nothing happens without pixels or context. source is not used.
    virtual void drawToContext(void* context, const CRect* target, const CRect* source) = 0;
    virtual int getBitsPerPixel() const = 0;

    // In pixels; 0 while there are none.
    unsigned int getWidth() const { return width; }
    unsigned int getHeight() const { return height; }
    // In bytes.
    int getRowBytes() const { return rowBytes; }
    std::uint32_t getTotalBytes() const { return totalBytes; }
    // The first row in memory is shown lowest.
    bool isFlipped() const { return flipped; }
    void setFlipped(bool lowestFirst) { flipped = lowestFirst; }

protected:
    std::uint32_t totalBytes = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::int32_t rowBytes = 0;
    unsigned char* pixels = nullptr;
    bool flipped = false;
};
}
