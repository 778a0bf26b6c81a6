// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/CAnimKnob.h"

#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Tovra
{
CAnimKnob::CAnimKnob(const CRect& rect, CControlListener* heardBy, long withTag, CBitmap* bitmap,
                     double height, const CPoint& offset)
    : CKnob(rect, heardBy, withTag, bitmap, nullptr, offset)
{
    CAnimKnob::setHeightOfOneImage(height);
}

CAnimKnob::CAnimKnob(const CRect& rect, CControlListener* heardBy, long withTag, int number, double height,
                     CBitmap* bitmap, const CPoint& offset)
    : CKnob(rect, heardBy, withTag, bitmap, nullptr, offset)
{
    IMultiBitmapControl::setHeightOfOneImage(height);
    setNumberOfImages(number);
}

bool CAnimKnob::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CAnimKnob") == 0) || CKnob::isTypeOf(name);
}

void CAnimKnob::setHeightOfOneImage(const double& height)
{
    IMultiBitmapControl::setHeightOfOneImage(height);
    const CBitmap* const bitmap = getBackground();
    if (bitmap != nullptr && heightOfOneImage > 0.0)
        setNumberOfImages(bitmap->getHeight() / heightOfOneImage);
}

void CAnimKnob::autoComputeHeightOfOneImage()
{
    if (const CBitmap* const bitmap = getBackground())
        heightOfOneImage = bitmap->getHeight() / getNumberOfImages();
}

double CAnimKnob::position() const
{
    const double width = double(getMax()) - getMin();
    return width != 0.0 ? std::clamp((getValue() - getMin()) / width, 0.0, 1.0) : 0.0;
}

void CAnimKnob::draw(CDrawContext* context)
{
    noteHandle();
    if (CBitmap* const bitmap = getBackground())
    {
        const int shown = int(std::floor(position() * (getNumberOfImages() - 1) + 0.5));
        const CPoint from(getBackOffset().x, getBackOffset().y + shown * heightOfOneImage);
        getTransparency() ? bitmap->drawTransparent(context, size, from) : bitmap->draw(context, size, from);
    }
    drawFocus(context);
    setDirty(false);
}

bool CAnimKnob::isDirty() const
{
    CPoint now;
    valueToPoint(now);
    return CKnob::isDirty() || !(now == drawnHandle);
}
}
