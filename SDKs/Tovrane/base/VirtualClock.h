// SPDX-License-Identifier: GPL-3.0-or-later
// A clock for tests, and for tools that drive a window without a user: waiting takes no time.
//
// It is the current clock as long as it lives, and stands still until it is told to go on, or until somebody
// waits for something that is not there yet: then so much time has passed at once. A run loop under it calls
// its timers in the same order and at the same times in every run, however slow the machine is.
#pragma once

#include "Tovrane/base/Clock.h"

namespace Tovra
{
// [window thread]
class VirtualClock : public Clock
{
public:
    VirtualClock() { setCurrent(this); }
    ~VirtualClock() override { setCurrent(nullptr); }
    VirtualClock(const VirtualClock&) = delete;
    VirtualClock& operator=(const VirtualClock&) = delete;

    void advance(int milliseconds) { now += std::int64_t(milliseconds) * 1000; }
    void setMicroseconds(std::int64_t time) { now = time; }
    int milliseconds() const { return int(now / 1000); }

    std::int64_t microseconds() override { return now; }
    // Descriptors that are ready are found at once. Throws std::runtime_error where a wait would never end.
    int wait(pollfd* descriptors, unsigned long count, int milliseconds) override;

private:
    std::int64_t now = 0;
};
}
