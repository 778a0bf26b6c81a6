// SPDX-License-Identifier: GPL-3.0-or-later
// A dial: turned by dragging around its centre, or, with alt, up and down; by the wheel and the arrow keys. A
// middle click, or one with control, sets the default value.
//
// It is bound to a parameter by setAttachedProperty, and then shows it whoever changes it. [window thread],
// except for parameterChanged.
#pragma once

#include "Tovrane/base/Kept.h"
#include "Tovrane/draw/CColor.h"
#include "Tovrane/views/controls/ValueDrag.h"
#include "Tovrane/views/controls/ValueStep.h"
#include "Tovrane/views/tree/CControl.h"

namespace Tovra
{
class CKnob : public CControl
{
public:
    // offset is that of the background. The handle may be null: it is drawn then.
    CKnob(const CRect& rect, CControlListener* listener, long tag, CBitmap* background, CBitmap* handle,
          const CPoint& offset = CPoint());
    CKnob(const CKnob& other);
    ~CKnob() override;

    // In radians, counterclockwise from the right: where the value is the minimum, and how far it is from
    // there to the maximum. By default the dial goes clockwise from the lower left to the lower right.
    virtual void setStartAngle(float angle);
    virtual float getStartAngle() const { return startAngle; }
    virtual void setRangeAngle(float angle);
    virtual float getRangeAngle() const { return rangeAngle; }
    // The middle of the handle for the present value, and the value for a point; in the view.
    virtual void valueToPoint(CPoint& point) const;
    virtual float valueFromPoint(const CPoint& point) const;

    virtual void drawHandle(CDrawContext* context);
    virtual void setColorHandle(CColor color);
    virtual void setColorShadowHandle(CColor color);
    virtual void setHandleBitmap(CBitmap* bitmap);
    // The distance of the handle from the edge, and the radius of one that is drawn.
    virtual void setInset(double distance) { inset = distance; }
    virtual void setHandleRadius(double radius) { handleRadius = radius; }
    // How much finer a fine drag is.
    virtual void setZoomFactor(float factor) { drag.setZoomFactor(factor); }
    virtual float getZoomFactor() const { return drag.getZoomFactor(); }

    void draw(CDrawContext* context) override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseUp(CPoint& where, const long& buttons) override;
    bool holdsMouse() const override { return isEdited(); }
    using CControl::onWheel;
    bool onWheel(const CPoint& where, const float& distance, const long& buttons) override;
    long onKeyDown(TovraKeyCode& code) override;
    void parameterChanged(Orbel::ParameterProperty* property) override;
    void cancelEdit() override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return new CKnob(*this); }
    const char* getClassName() const override { return "CKnob"; }

protected:
    // Changes the value within the gesture that is open, if it is another one: the parameter, the host and
    // the listener hear of it.
    void edit(float next);
    // Writes the value to the parameter; the value may be rounded to what the parameter can be.
    virtual void writeValue();
    // The change of the value by the wheel or an arrow key.
    virtual float changeBy(const ValueStep& step) const { return step.of(getWheelInc()); }
    // Whether every drag is one up and down.
    virtual bool isAlwaysLinear() const { return false; }
    // The gesture on this control is held by that button.
    long heldButton() const { return button; }
    ValueDrag& valueDrag() { return drag; }
    void stepBy(const ValueStep& step);

private:
    double radius() const;

    double inset = 0.0;
    double handleRadius = 3.0;
    float startAngle;
    float rangeAngle;
    CColor handleColor;
    CColor shadowColor;
    Kept<CBitmap> handle;
    ValueDrag drag;
    long button = 0; // that opened the gesture
    bool isLinear = false;
};

// Whether the point is within half the width of the rectangle from its centre.
bool hitCircular(const CRect& rect, const CPoint& point);
}
