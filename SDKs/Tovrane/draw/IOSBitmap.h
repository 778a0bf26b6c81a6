// SPDX-License-Identifier: GPL-3.0-or-later
// A picture in memory that the window system can show, of 32 bits a pixel: blue, green, red, alpha.
//
// A frame's picture and every bitmap are of this kind. CMACBitmap implements it. One thread at a time.
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
    // Null while there are no pixels. Row y begins y x getRowBytes() bytes after it.
    virtual unsigned char* getPixelPtr() = 0;
    // Replaces the pixels by new ones, all zero; a width or height of 0 counts as 1. False, and an empty
    // picture of 0 x 0, if there is not enough memory, or if it would take more than 64 MiB.
    virtual bool setSize(unsigned int w, unsigned int h) = 0;
    virtual void destroy() = 0;
    // [window thread]  To be called before pixels of a frame's picture are changed: waits until the window
    // system has read what it was asked to show. Most pictures are read by nobody else.
    virtual void beginDrawing() {}
    // [window thread]  Shows the whole picture in target, or, if that is null, at (0, 0) in its own size.
    // context is an IBlitTarget*. Nothing happens without pixels or context. source is not used.
    virtual void drawToContext(void* context, const CRect* target, const CRect* source) = 0;
    virtual int getBitsPerPixel() const = 0;

    // In pixels; 0 for an empty picture.
    unsigned int getWidth() const { return width; }
    unsigned int getHeight() const { return height; }
    // In bytes.
    int getRowBytes() const { return rowBytes; }
    std::uint32_t getTotalBytes() const { return totalBytes; }
    // Whether the first row in memory is the lowest one.
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
