// SPDX-License-Identifier: GPL-3.0-or-later
// A run loop in virtual time, for windows that a script drives: timers come in the same order and at the same
// times in every run, and no time is spent.
#pragma once

#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/base/VirtualClock.h"

namespace lodex
{
// [window thread]  It is the current loop and the current clock as long as it lives. Made before the window,
// it outlives it.
class VirtualTime
{
public:
    VirtualTime() { Tovra::RunLoop::enter(loop); }
    VirtualTime(const VirtualTime&) = delete;
    VirtualTime& operator=(const VirtualTime&) = delete;

    // Calls what is due in so many milliseconds.
    void advance(int milliseconds) { loop.runFor(milliseconds); }
    int milliseconds() const { return clock.milliseconds(); }

private:
    Tovra::VirtualClock clock;
    Tovra::PollRunLoop loop;
};
}
