// SPDX-License-Identifier: GPL-3.0-or-later
// A user of a window without a screen: a pointer, its buttons, and a keyboard with modifiers that are held.
//
// Events come to the window as a window system sends them: a pointer that goes outside with no button held
// leaves the window, and one that ends its drag there leaves it then. What is clicked in an open text field
// stays there.
#pragma once

#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"

#include <string>

namespace lodex
{
// [window thread]  Places are in units. Each step may close the window; those that follow do nothing then.
class ShotUser
{
public:
    explicit ShotUser(Tovra::HeadlessFrame& drivenWindow) : window(&drivenWindow) {}

    void move(const Tovra::CPoint& place);
    void leave();
    // One button each, where the pointer was moved last; (0, 0) before that.
    void press(long button) { press(button, 1); }
    void release(long button);
    // Two clicks, the second one with kDoubleClick.
    void doubleClick(long button);
    // As in a mouse word.
    void hold(long modifierBits) { modifiers = modifierBits; }
    void wheel(const Tovra::CPoint& place, double notches);
    // Down and up, with the modifiers that are held.
    void strike(Tovra::TovraKeyCode key);
    // Key by key.
    void type(const std::string& text);
    // What is held is let go, as when the mouse is lost.
    void letGo();

private:
    void press(long button, int clicks);
    bool isInside(const Tovra::CPoint& place) const;
    bool isInField(const Tovra::CPoint& place) const;
    Tovra::CPoint worldOf(Tovra::CPoint place) const;
    // Tells the window where the mouse is, for who asks.
    void noteMouse();

    const Tovra::Kept<Tovra::HeadlessFrame> window;
    Tovra::CPoint pointer;
    bool hasLeft = false;
    long modifiers = 0;
};
}
