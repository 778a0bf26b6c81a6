// SPDX-License-Identifier: GPL-3.0-or-later
// How large a window shows its frame: what the host wants, or else the desktop, times the user's choice.
//
// An editor (or a tool) has one beside each of its frames. A right click on empty ground of the frame offers
// the user's choice as a menu; the choice is one for all windows of the process, and changes them at once.
#pragma once

#include "Tovrane/base/CPoint.h"

#include <functional>

namespace Tovra
{
class CFrame;

// The choice, in percent. [window thread]
namespace UserScale
{
constexpr int choices[] = {75, 100, 125, 150, 175, 200, 250, 300};

// Where the choice is kept from one session to the next. load answers what was stored; anything but one of
// the choices counts as 100. Without a storage every session begins with 100.
struct Storage
{
    std::function<int()> load;
    std::function<void(int)> store;
};
void setStorage(Storage storage);

int percent();
// Stores the choice and renews the scale of all windows. Anything but one of the choices is ignored.
void choose(int percent);
}

// [window thread]
class WindowScale
{
public:
    static constexpr double smallest = 0.75;
    static constexpr double largest = 4.0;

    // Calls apply with the scale, now and whenever it changes. The frame has to outlive this object.
    WindowScale(CFrame& frame, std::function<void(double)> apply, double hostScale = 0.0);
    ~WindowScale();
    WindowScale(const WindowScale&) = delete;
    WindowScale& operator=(const WindowScale&) = delete;

    // The scale that a window would have, before there is one: with the desktop's scale of the last window.
    static double expected(double hostScale);

    // What a host tells for its part of the screen; it counts in place of the desktop's scale, never with it.
    // 0 (or any number that is no scale) if the host tells nothing.
    void setHostScale(double pixelsPerUnit);
    // Pixels to a unit.
    double get() const { return current; }
    // Looks at the desktop and at the user's choice again.
    void renew();

private:
    void openMenu(const CPoint& where);

    CFrame& frame;
    const std::function<void(double)> apply;
    double hostScale = 0.0;
    double current = 0.0;
};
}
