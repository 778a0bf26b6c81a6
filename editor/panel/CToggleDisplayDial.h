// SPDX-License-Identifier: GPL-3.0-or-later
// A dial of the panel, drawn by lines: an arc of the value, from the left end or, for a curve, from the
// middle; beside it the parameter's name and its value. [window thread], except for parameterChanged.
#pragma once

#include "Tovrane/views/controls/Tovra_AnimKnob.h"

namespace Tovra
{
class CToggleDisplayDial : public Tovra_AnimKnob
{
public:
    // label has to outlive the dial.
    CToggleDisplayDial(const CRect& rect, Orbel::ParameterProperty* property, const char* label,
                       bool isCurve);

    // A detent at a normalised value, half its size to either side; beyond 0 to 1 there is none.
    void setSnapPoint(float normalized) { deadZone().centre = normalized; }
    void setSnapSize(float width) { deadZone().width = width; }
    void setUseSnap(bool isOn)
    {
        deadZone().isOn = isOn && deadZone().centre >= 0.0f && deadZone().centre <= 1.0f;
    }

    void draw(CDrawContext* context) override;
    bool isDirty() const override { return CControl::isDirty(); }
    // Within the ring alone.
    bool hitTest(const CPoint& where, long buttons = -1) override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "CToggleDisplayDial"; }

private:
    CRect hitRect() const;
    void drawArc(CDrawContext* context, const CRect& ring);

    const char* const label;
    const bool isCurve;
};
}
