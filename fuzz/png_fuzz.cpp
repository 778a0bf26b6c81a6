// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a picture: as they are, and with correct check sums, so that the content of the chunks is
// read, too. The result is drawn in every way.
#include "Require.h"
#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "support/PngBytes.h"

#include <string>

namespace
{
using Tovra::CPoint;
using Tovra::CRect;

void tryPicture(const std::string& file)
{
    Tovra::CBitmap bitmap(nullptr, true);
    PngBytes stream(file);
    require(bitmap.loadFromStream(&stream), "any stream gives a picture, as far as it came");
    const auto* const memory = bitmap.getOSBitmap();
    require(bitmap.getWidth() == memory->getWidth() && bitmap.getHeight() == memory->getHeight(),
            "the picture is as large as its memory");
    require(bitmap.getWidth() <= 8192.0 && bitmap.getHeight() <= 8192.0, "nothing is larger than the limit");

    Tovra::CMACBitmap target;
    target.setSize(16, 16);
    Tovra::PelmoAGG renderer;
    renderer.attach(target.getPixelPtr(), 16, 16, target.getRowBytes());
    auto* const context = new Tovra::CDrawContext();
    context->setAGGRenderer(&renderer);
    context->setClipRect(CRect(0, 0, 16, 16));
    bitmap.draw(context, CRect(-3, -3, 30, 30), CPoint(1, 2));
    bitmap.drawAlphaBlend(context, CRect(2, 2, 9000, 9000), CPoint(), 100);
    bitmap.drawScaled(context, CRect(0, 0, bitmap.getWidth(), bitmap.getHeight()), CRect(1, 1, 12, 12));
    context->setAGGRenderer(nullptr);
    context->forget();
}
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    tryPicture(bytes);
    tryPicture(withRightCheckSums(bytes));
    return 0;
}
