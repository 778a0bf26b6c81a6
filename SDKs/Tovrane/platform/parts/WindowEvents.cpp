#include "Tovrane/platform/parts/WindowEvents.h"

#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/CDragContainer.h"

namespace Tovra
{
long mouseButtonBit(int number)
{
    constexpr long bits[] = {kButtonLeft, kButtonRight, kButtonMiddle, kButtonMiddle, kButton4, kButton5};
    const bool isKnown = number >= 0 && number < int(sizeof bits / sizeof *bits);
    return isKnown ? bits[number] : 0;
}

// The frame, and with it this object, lives until the call is over.
template <typename Call>
bool WindowEvents::deliver(CPoint where, Call call)
{
    const Kept<CFrame> target(frame);
    if (!target)
        return false;
    target->convertWorldToPlugin(where);
    call(*target.get(), where);
    return true;
}

bool WindowEvents::press(CPoint where, long buttons, int clicks)
{
    const long word = (buttons & ~kDoubleClick) | (clicks >= 2 ? kDoubleClick : 0);
    return deliver(where, [=](CFrame& target, CPoint& point) { target.onMouseDown(point, word); });
}

bool WindowEvents::release(CPoint where, long buttons)
{
    const long word = buttons & ~kDoubleClick;
    return deliver(where, [=](CFrame& target, CPoint& point) { target.onMouseUp(point, word); });
}

bool WindowEvents::move(CPoint where, long buttons)
{
    const long word = buttons & ~kDoubleClick;
    return deliver(where, [=](CFrame& target, CPoint& point) { target.onMouseMoved(point, word); });
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
    const Kept<CFrame> target(frame);
    TovraKeyCode key = code;
    return target ? target->onKeyDown(key) : kKeyNotHandled;
}

long WindowEvents::keyUp(const TovraKeyCode& code)
{
    const Kept<CFrame> target(frame);
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
