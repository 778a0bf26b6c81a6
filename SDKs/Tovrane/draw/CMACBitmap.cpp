// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CMACBitmap.h"

#include "CORE/ForeignData.h"
#include "Tovrane/draw/IBlitTarget.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace Tovra
{
constexpr std::align_val_t pixelAlignment{16};
constexpr std::uint32_t slack = 24; // bytes after the last row

CMACBitmap::~CMACBitmap()
{
    CMACBitmap::destroy();
}

bool CMACBitmap::setSize(unsigned int w, unsigned int h)
{
    CMACBitmap::destroy();
    w = std::max(w, 1u);
    h = std::max(h, 1u);
    const std::uint64_t row = std::uint64_t(w) * unsigned(getBitsPerPixel()) / 8;
    if (row > Core::kLargestForeignSize / h)
        return false;

    const std::uint32_t total = std::uint32_t(row * h);
    pixels = static_cast<unsigned char*>(::operator new(total + slack, pixelAlignment, std::nothrow));
    if (!pixels)
        return false;
    std::memset(pixels, 0, total + slack);
    width = w;
    height = h;
    rowBytes = std::int32_t(row);
    totalBytes = total;
    return true;
}

void CMACBitmap::destroy()
{
    ::operator delete(pixels, pixelAlignment);
    pixels = nullptr;
    width = height = totalBytes = 0;
    rowBytes = 0;
}

void CMACBitmap::drawToContext(void* context, const CRect* target, const CRect*)
{
    if (!context || !pixels)
        return;
    const CRect whole(0.0, 0.0, width, height);
    static_cast<IBlitTarget*>(context)->blit({pixels, width, height, rowBytes, flipped},
                                             target ? *target : whole);
}
}
