// SPDX-License-Identifier: GPL-3.0-or-later
// The dial of the product's window: bound to a parameter, turned by dragging up and down, and drawn from a
// strip of pictures, two of which are mixed for a position between them.
//
// When the parameter changes without a gesture, the dial glides to its new position over several paints. It
// can have a number of steps, a detent (the dead zone), and a round area for the mouse. [window thread],
// except for parameterChanged.
#pragma once

#include "Tovrane/views/controls/CAnimKnob.h"

#include <memory>

namespace Tovra
{
class Tovra_AnimKnob : public CAnimKnob
{
public:
    // The tag is the property's id, unless there is none. The property may be null.
    Tovra_AnimKnob(const CRect& rect, CControlListener* listener, long tag, int images,
                   double heightOfOneImage, CBitmap* bitmap, const CPoint& offset,
                   Orbel::ParameterProperty* property);
    Tovra_AnimKnob(const Tovra_AnimKnob& other);
    ~Tovra_AnimKnob() override;

    // The way of the mouse from the minimum to the maximum, in units; 0 for the usual 200.
    void setRange(float length) { valueDrag().setRange(length); }
    DeadZone& deadZone() { return valueDrag().deadZone(); }
    // Whether the mouse reaches the dial only within a circle; half as wide as the dial unless set otherwise.
    void setCircularHit(bool flag) { isCircular = flag; }
    void setHitRadius(int radius) { hitRadius = radius; }
    // Only this number of equally spaced values; below 2 for all values. The parameter gets whole numbers
    // from its minimum on.
    void setSteps(int count);
    // Whether it glides to a new value; it does at first.
    void setEased(bool flag) { isEased = flag; }
    // The position that is shown.
    float getEasedValue() const { return easedValue; }

    void draw(CDrawContext* context) override;
    bool isDirty() const override;
    bool hitTest(const CPoint& where, long buttons = -1) override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    void setAttachedProperty(Orbel::ParameterProperty* property) override;
    void parameterChanged(Orbel::ParameterProperty* property) override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return new Tovra_AnimKnob(*this); }
    const char* getClassName() const override { return "Tovra_AnimKnob"; }

protected:
    void writeValue() override;
    float changeBy(const ValueStep& step) const override;
    bool isAlwaysLinear() const override { return true; }

private:
    class MixedPicture;

    bool glide();
    void drawPosition(CDrawContext* context);
    float positionOf(const Orbel::ParameterProperty& property) const;

    int hitRadius;
    int steps = 0;
    bool isCircular = false;
    bool isEased = true;
    Core::Relaxed<float> easedValue = 0.0f; // written by the window thread
    std::unique_ptr<MixedPicture> picture;
};

// The part of the remaining way that a gliding dial goes in one paint.
constexpr double gFadetime = 0.4;
}
