// SPDX-License-Identifier: GPL-3.0-or-later
// A picture in memory: the only implementation of IOSBitmap, on every system.
//
// The first pixel is aligned to 16 bytes, and there is no padding between rows.
#pragma once

#include "Tovrane/draw/IOSBitmap.h"

namespace Tovra
{
class CMACBitmap : public IOSBitmap
{
public:
    CMACBitmap() = default;
    ~CMACBitmap() override;

    unsigned char* getPixelPtr() override { return pixels; }
    bool setSize(unsigned int w, unsigned int h) override;
    void destroy() override;
    void drawToContext(void* context, const CRect* target, const CRect* source) override;
    int getBitsPerPixel() const override { return 32; }
};
}
