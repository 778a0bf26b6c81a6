// SPDX-License-Identifier: GPL-3.0-or-later
// A clock that stands until it is told to go on, or until somebody waits for something that isn't there yet:
// then so much time is over at once.
#pragma once

#include "Tovrane/base/Clock.h"

#include <poll.h>
#include <stdexcept>

class ManualClock : public Tovra::Clock
{
public:
    ManualClock() { setCurrent(this); }
    ~ManualClock() override { setCurrent(nullptr); }
    ManualClock(const ManualClock&) = delete;
    ManualClock& operator=(const ManualClock&) = delete;

    void advance(int milliseconds) { now += milliseconds * 1000; }
    int milliseconds() const { return int(now / 1000); }

    std::int64_t microseconds() override { return now; }
    int wait(pollfd* descriptors, unsigned long count, int milliseconds) override
    {
        const int ready = poll(descriptors, count, 0);
        if (ready == 0 && milliseconds < 0)
            throw std::runtime_error("would wait for ever");
        if (ready == 0)
            advance(milliseconds);
        return ready;
    }

    std::int64_t now = 0; // microseconds
};
