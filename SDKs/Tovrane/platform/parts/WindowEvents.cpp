// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/WindowEvents.h"

#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/CDragContainer.h"

#include <utility>

namespace Tovra
{
static constexpr long allButtons = kButtonLeft | kButtonMiddle | kButtonRight | kButton4 | kButton5;

long mouseButtonBit(int number)
{
    constexpr long bits[] = {kButtonLeft, kButtonRight, kButtonMiddle, kButtonMiddle, kButton4, kButton5};
    const bool isKnown = number >= 0 && number < int(sizeof bits / sizeof *bits);
    return isKnown ? bits[number] : 0;
}

// One event on its way. The frame, and with it this object, lives until it is over.
class WindowEvents::Delivery
{
public:
    explicit Delivery(WindowEvents& delivering) : events(delivering), target(events.frame)
    {
        ++events.deliveries;
    }
    ~Delivery()
    {
        if (--events.deliveries == 0 && events.afterEvent)
            events.afterEvent();
    }
    Delivery(const Delivery&) = delete;

    explicit operator bool() const { return bool(target); }
    CFrame* operator->() const { return target.get(); }
    CFrame& operator*() const { return *target.get(); }

private:
    WindowEvents& events;
    const Kept<CFrame> target;
};

template <typename Call>
bool WindowEvents::deliver(CPoint where, Call call)
{
    const Delivery target(*this);
    if (!target)
        return false;
    target->convertWorldToPlugin(where);
    call(*target, where);
    return true;
}

void WindowEvents::disconnect()
{
    frame = nullptr;
    held = owed = 0;
}

bool WindowEvents::press(CPoint where, long buttons, int clicks)
{
    const Delivery whole(*this);
    const long button = buttons & allButtons;
    release(where, buttons); // one that never came
    if (!isConnected() || (pressing & button) != 0)
        return isConnected();
    held |= button;
    lastPlace = where;
    const long word = (buttons & ~kDoubleClick) | (clicks >= 2 ? kDoubleClick : 0);
    const long outer = std::exchange(pressing, pressing | button);
    deliver(where, [=](CFrame& target, CPoint& point) { target.onMouseDown(point, word); });
    pressing = outer;
    if ((owed & button) != 0)
    {
        owed &= ~button;
        deliverRelease(lastPlace, button, buttons & kAllModifiers);
    }
    return true;
}

bool WindowEvents::release(CPoint where, long buttons)
{
    const long button = buttons & held;
    lastPlace = where;
    if (button == 0)
        return isConnected();
    held &= ~button;
    owed |= button & pressing;
    if ((button & pressing) != 0)
        return isConnected();
    return deliverRelease(where, button, buttons & kAllModifiers);
}

bool WindowEvents::deliverRelease(CPoint where, long button, long modifiers)
{
    const long word = button | modifiers;
    return deliver(where, [=](CFrame& target, CPoint& point) { target.onMouseUp(point, word); });
}

void WindowEvents::releaseEach(CPoint where, long buttons, long modifiers)
{
    const Delivery whole(*this);
    for (long button = 1; button <= allButtons; button <<= 1)
        if ((buttons & button) != 0)
            release(where, button | modifiers);
}

void WindowEvents::releaseAllBut(long stillHeld)
{
    releaseEach(lastPlace, held & ~stillHeld, 0);
}

bool WindowEvents::move(CPoint where, long buttons)
{
    const Delivery whole(*this);
    releaseEach(where, held & ~buttons, buttons & kAllModifiers);
    lastPlace = where;
    const long word = buttons & ~kDoubleClick;
    return deliver(where, [=](CFrame& target, CPoint& point) { target.onMouseMoved(point, word); });
}

bool WindowEvents::leave(CPoint where, long modifiers)
{
    return deliver(where, [=, this](CFrame& target, CPoint& point)
                   { target.onMouseExited(point, modifiers | held); });
}

void WindowEvents::vanish()
{
    const Delivery whole(*this);
    releaseAll();
    leave(lastPlace, 0);
}

bool WindowEvents::wheel(CPoint where, double notchesX, double notchesY, long buttons)
{
    return deliver(where,
                   [=, this](CFrame& target, CPoint& point)
                   {
                       if (notchesX != 0.0)
                           target.onWheel(point, kMouseWheelAxisX, float(notchesX), buttons);
                       if (notchesY != 0.0 && isConnected())
                           target.onWheel(point, kMouseWheelAxisY, float(notchesY), buttons);
                   });
}

long WindowEvents::keyDown(const TovraKeyCode& code)
{
    const Delivery target(*this);
    TovraKeyCode key = code;
    return target ? target->onKeyDown(key) : kKeyNotHandled;
}

long WindowEvents::keyUp(const TovraKeyCode& code)
{
    const Delivery target(*this);
    TovraKeyCode key = code;
    return target ? target->onKeyUp(key) : kKeyNotHandled;
}

bool WindowEvents::dragEnter(CDragContainer* content, CPoint where)
{
    return deliver(where, [=](CFrame& target, CPoint& point) { target.onDragEnter(content, point); });
}

bool WindowEvents::dragMove(CDragContainer* content, CPoint where)
{
    return deliver(where, [=](CFrame& target, CPoint& point) { target.onDragMove(content, point); });
}

bool WindowEvents::dragLeave(CDragContainer* content, CPoint where)
{
    return deliver(where, [=](CFrame& target, CPoint& point) { target.onDragLeave(content, point); });
}

bool WindowEvents::drop(CDragContainer* content, CPoint where)
{
    bool taken = false;
    deliver(where, [&](CFrame& target, CPoint& point) { taken = target.onDrop(content, point); });
    return taken;
}
}
