// SPDX-License-Identifier: GPL-3.0-or-later
// A dial whose bitmap holds a picture for each of its positions, the one for the minimum at the top.
// [window thread]
#pragma once

#include "Tovrane/views/controls/CKnob.h"
#include "Tovrane/views/controls/IMultiBitmapControl.h"

namespace Tovra
{
class CAnimKnob : public CKnob, public IMultiBitmapControl
{
public:
    // As many images as the bitmap holds of that height, or as many as are given.
    CAnimKnob(const CRect& rect, CControlListener* listener, long tag, CBitmap* bitmap,
              double heightOfOneImage, const CPoint& offset = CPoint());
    CAnimKnob(const CRect& rect, CControlListener* listener, long tag, int images, double heightOfOneImage,
              CBitmap* bitmap, const CPoint& offset = CPoint());

    // Also computes the number of images anew.
    void setHeightOfOneImage(const double& height) override;
    void autoComputeHeightOfOneImage() override;

    void draw(CDrawContext* context) override;
    // Also if the handle has moved since it was drawn.
    bool isDirty() const override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return new CAnimKnob(*this); }
    const char* getClassName() const override { return "CAnimKnob"; }

protected:
    // From 0 to 1, whatever the range is.
    double position() const;
    void noteHandle() { valueToPoint(drawnHandle); }

private:
    CPoint drawnHandle;
};
}
