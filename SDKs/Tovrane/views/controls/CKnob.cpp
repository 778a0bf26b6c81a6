// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/CKnob.h"

#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/views/tree/CFrame.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numbers>

namespace Tovra
{
namespace
{
constexpr float defaultStartAngle = 3.9269907f; // 225 degrees
constexpr float defaultRangeAngle = -4.712389f; // 270 degrees, clockwise
constexpr long dragButtons = kButtonLeft | kButtonRight;
}

bool hitCircular(const CRect& rect, const CPoint& point)
{
    const CPoint away = point - rect.center();
    return std::hypot(away.x, away.y) <= rect.getWidth() * 0.5;
}

CKnob::CKnob(const CRect& rect, CControlListener* heardBy, long withTag, CBitmap* bitmap, CBitmap* withHandle,
             const CPoint& offset)
    : CControl(rect, heardBy, withTag, bitmap),
      startAngle(defaultStartAngle),
      rangeAngle(defaultRangeAngle),
      handleColor(kWhiteCColor),
      shadowColor(kGreyCColor),
      handle(withHandle)
{
    CPoint at = offset;
    setBackOffset(at);
    setWantsFocus(true);
}

CKnob::CKnob(const CKnob& other)
    : CControl(other),
      inset(other.inset),
      handleRadius(other.handleRadius),
      startAngle(other.startAngle),
      rangeAngle(other.rangeAngle),
      handleColor(other.handleColor),
      shadowColor(other.shadowColor),
      handle(other.handle)
{
}

CKnob::~CKnob() = default;

bool CKnob::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CKnob") == 0) || CControl::isTypeOf(name);
}

// Angles and points

void CKnob::setStartAngle(float angle)
{
    if (std::isfinite(angle))
        startAngle = angle;
    setDirty(true);
}

void CKnob::setRangeAngle(float angle)
{
    if (std::isfinite(angle))
        rangeAngle = angle;
    setDirty(true);
}

double CKnob::radius() const
{
    return size.getWidth() * 0.5;
}

void CKnob::valueToPoint(CPoint& point) const
{
    const float width = getMax() - getMin();
    const float share = width != 0.0f ? (getValue() - getMin()) / width : 0.0f;
    const double angle = double(startAngle) + double(share) * rangeAngle;
    const double reach = radius() - inset;
    point = CPoint(radius() + reach * std::cos(angle), size.getHeight() * 0.5 - reach * std::sin(angle));
}

float CKnob::valueFromPoint(const CPoint& point) const
{
    constexpr double turn = 2.0 * std::numbers::pi;
    const double direction = rangeAngle < 0.0f ? -1.0 : 1.0;
    const double angle = std::atan2(size.getHeight() * 0.5 - point.y, point.x - radius());
    double way = std::fmod((angle - startAngle) * direction, turn);
    if (way < 0.0)
        way += turn;
    const double whole = std::fabs(double(rangeAngle));
    if (way > whole) // in the gap: the nearer end
        return way - whole < turn - way ? getMax() : getMin();
    return whole > 0.0 ? float(getMin() + (getMax() - getMin()) * (way / whole)) : getMin();
}

// Looks

void CKnob::setColorHandle(CColor color)
{
    handleColor = color;
    setDirty(true);
}

void CKnob::setColorShadowHandle(CColor color)
{
    shadowColor = color;
    setDirty(true);
}

void CKnob::setHandleBitmap(CBitmap* bitmap)
{
    handle.reset(bitmap);
    setDirty(true);
}

void CKnob::draw(CDrawContext* context)
{
    if (CBitmap* const bitmap = getBackground())
        getTransparency() ? bitmap->drawTransparent(context, size, getBackOffset())
                          : bitmap->draw(context, size, getBackOffset());
    drawHandle(context);
    drawFocus(context);
    setDirty(false);
}

void CKnob::drawHandle(CDrawContext* context)
{
    CPoint at;
    valueToPoint(at);
    at = at + size.getTopLeft();
    if (CBitmap* const bitmap = handle.get())
    {
        const double left = at.x - bitmap->getWidth() * 0.5;
        const double top = at.y - bitmap->getHeight() * 0.5;
        return bitmap->drawTransparent(
            context, CRect(left, top, left + bitmap->getWidth(), top + bitmap->getHeight()), CPoint());
    }
    const CRect dot(at.x - handleRadius, at.y - handleRadius, at.x + handleRadius, at.y + handleRadius);
    CRect shadow = dot;
    context->setFillColor(shadowColor);
    context->drawEllipse(shadow.offset(0.0, 1.0), kFilled);
    context->setFillColor(handleColor);
    context->drawEllipse(dot, kFilled);
}

// Gestures

void CKnob::writeValue()
{
    if (Orbel::ParameterProperty* const property = getAttachedProperty())
        property->setValue_Normalized(this, value);
}

void CKnob::edit(float next)
{
    const float before = value;
    value = next;
    bounceValue();
    if (value == before)
        return;
    writeValue();
    if (value == before)
        return;
    performEdit();
    if (getListener() != nullptr)
        getListener()->valueChanged(this);
}

MouseEventResult CKnob::onMouseDown(CPoint& where, const long& buttons)
{
    const Kept<CKnob> self(this);
    if (isEdited())
        return kMouseHandled;
    if (checkDefaultValue(buttons))
    {
        updateReadout();
        setDirty(true);
        return kMouseHandledNoMoves;
    }
    if ((buttons & dragButtons) == 0)
        return kMouseUnhandled;
    button = (buttons & kButtonLeft) != 0 ? kButtonLeft : kButtonRight;
    isLinear = isAlwaysLinear() || (buttons & kModAlt) != 0;
    beginEdit();
    drag.begin(where, buttons, value, getMin(), getMax());
    return isLinear ? kMouseHandled : onMouseMoved(where, buttons);
}

MouseEventResult CKnob::onMouseMoved(CPoint& where, const long& buttons)
{
    const Kept<CKnob> self(this);
    if (!isEdited())
        return CControl::onMouseMoved(where, buttons);
    if (isLinear && drag.isAtLast(where))
        return kMouseHandled;
    const CPoint inside = where - size.getTopLeft();
    edit(isLinear ? drag.valueAt(where, buttons, !isAlwaysLinear()) : valueFromPoint(inside));
    updateReadout();
    setDirty(true);
    return kMouseHandled;
}

MouseEventResult CKnob::onMouseUp(CPoint& where, const long& buttons)
{
    const Kept<CKnob> self(this);
    if (!isEdited() || (buttons & button) == 0)
        return kMouseHandled;
    if (getAttachedProperty() != nullptr)
        performEdit();
    endEdit();
    if (!isWithinEdges(size, where))
        onMouseExited(where, 0);
    return kMouseHandled;
}

void CKnob::cancelEdit()
{
    CControl::cancelEdit();
    button = 0;
}

void CKnob::stepBy(const ValueStep& step)
{
    const Kept<CKnob> self(this);
    if (isEdited()) // the drag that is under way decides
        return;
    beginEdit();
    edit(value + changeBy(step));
    endEdit();
    updateReadout();
    setDirty(true);
}

bool CKnob::onWheel(const CPoint& where, const float& distance, const long& buttons)
{
    const auto step = stepOfWheel(*this, where, distance, buttons);
    if (step)
        stepBy(*step);
    return step.has_value();
}

long CKnob::onKeyDown(TovraKeyCode& code)
{
    const auto step = stepOfKey(*this, code);
    if (!step)
        return kKeyNotHandled;
    stepBy(*step);
    return kKeyConsumed;
}

// The parameter

void CKnob::parameterChanged(Orbel::ParameterProperty* property)
{
    if (property != nullptr && property == getAttachedProperty())
    {
        value = property->getCurrentValue_normalized();
        setDirty(true);
    }
    CControl::parameterChanged(property);
}
}
