// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/Tovra_ActionButton.h"

#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/base/CTimerObject.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/views/tree/CFrame.h"

#include <algorithm>
#include <cstring>

namespace Tovra
{
constexpr double fullLevel = 255.0;
constexpr double pressedLevel = 128.0; // a press answers at once
constexpr long pressButtons = kButtonLeft | kButtonRight;

double getFPSCoeff(long& last, double frames)
{
    constexpr double millisecondsOfAFrame = 60.0;
    const long now = long(Tovra_getTicks());
    const double passed = double(now - last) / (millisecondsOfAFrame * frames);
    last = now;
    return std::clamp(passed, 0.0, 1.0);
}

Tovra_ActionButton::Tovra_ActionButton(const CRect& rect, CControlListener* heardBy, long withTag,
                                       CBitmap* bitmap, Mode ofMode, bool fading, float fadeSpeed)
    : CControl(rect, heardBy, withTag, bitmap), mode(ofMode), fades(fading), speed(fadeSpeed)
{
    setWantsFocus(true);
}

bool Tovra_ActionButton::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "Tovra_ActionButton") == 0) || CControl::isTypeOf(name);
}

void Tovra_ActionButton::setOffset(const CPoint& offset)
{
    CPoint at = offset;
    setBackOffset(at);
    setDirty(true);
}

void Tovra_ActionButton::setInverted(bool flag)
{
    isInverted = flag;
    setDirty(true);
}

// Any thread.
void Tovra_ActionButton::show(bool on)
{
    state = on;
    lastTick = long(Tovra_getTicks());
    setDirty(true);
}

void Tovra_ActionButton::setValue(float newValue)
{
    CControl::setValue(newValue);
    show(value > 0.5f);
}

// What a user does

void Tovra_ActionButton::write()
{
    const bool on = state;
    value = on ? 1.0f : 0.0f;
    if (Orbel::ParameterProperty* const property = getAttachedProperty())
        property->setValue(this, value);
    performEdit();
    if (getListener() != nullptr)
        getListener()->valueChanged(this);
}

void Tovra_ActionButton::press()
{
    beginEdit();
    if (mode == kMomentary)
        level = pressedLevel;
    show(mode == kMomentary || !state);
    if (getAttachedProperty() != nullptr)
        performEdit();
    write();
    updateReadout();
}

void Tovra_ActionButton::release()
{
    if (mode == kMomentary && state)
    {
        show(false);
        write();
    }
    endEdit();
    setDirty(true);
}

MouseEventResult Tovra_ActionButton::onMouseDown(CPoint& where, const long& buttons)
{
    const Kept<CView> self(this);
    if (isEdited() || !size.pointInside(where) || (buttons & pressButtons) == 0)
        return kMouseHandled;
    button = (buttons & kButtonLeft) != 0 ? kButtonLeft : kButtonRight;
    press();
    return kMouseHandled;
}

MouseEventResult Tovra_ActionButton::onMouseMoved(CPoint& where, const long& buttons)
{
    return isEdited() ? kMouseHandled : CControl::onMouseMoved(where, buttons);
}

MouseEventResult Tovra_ActionButton::onMouseUp(CPoint& where, const long& buttons)
{
    const Kept<CView> self(this);
    if (!isEdited() || (buttons & button) == 0)
        return kMouseHandled;
    release();
    if (isWithinEdges(size, where))
        updateReadout();
    else
        onMouseExited(where, 0);
    return kMouseHandled;
}

void Tovra_ActionButton::cancelEdit()
{
    if (isEdited())
        release();
}

long Tovra_ActionButton::onKeyDown(TovraKeyCode& code)
{
    const Kept<CView> self(this);
    const bool isPress =
        code.virtualKey == kVirtualReturn || code.virtualKey == kVirtualSpace || code.character == ' ';
    if (!isPress || getFrame() == nullptr || getFrame()->getFocusView() != this || !isEnabled() || isEdited())
        return kKeyNotHandled;
    press();
    release();
    return kKeyConsumed;
}

// The parameter

void Tovra_ActionButton::parameterChanged(Orbel::ParameterProperty* property)
{
    if (property != nullptr && property == getAttachedProperty())
        setValue(property->getCurrentValue());
    CControl::parameterChanged(property);
}

// Looks

void Tovra_ActionButton::drawRow(CDrawContext& context, bool on, unsigned char alpha)
{
    const double row = on != isInverted ? size.getHeight() : 0.0;
    getBackground()->drawAlphaBlend(&context, size, CPoint(getBackOffset().x, getBackOffset().y + row),
                                    alpha);
}

void Tovra_ActionButton::draw(CDrawContext* context)
{
    setDirty(false);
    const bool on = state;
    const double goal = on ? fullLevel : 0.0;
    if (fades && level >= 0.0)
    {
        long last = lastTick;
        const double step = getFPSCoeff(last, 6.0) * fullLevel * speed;
        lastTick = last;
        level = std::clamp(on ? level + step : level - step, 0.0, fullLevel);
    }
    else
        level = goal;
    if (getBackground() != nullptr)
    {
        drawRow(*context, level == fullLevel, 255);
        if (level > 0.0 && level < fullLevel)
            drawRow(*context, true, static_cast<unsigned char>(level));
    }
    drawFocus(context);
    if (level != goal)
        setDirty(true);
}
}
