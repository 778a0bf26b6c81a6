// SPDX-License-Identifier: GPL-3.0-or-later
// Tells the time and waits: the machine's clock, or a test's clock, for which waiting takes no time.
//
// There is one current clock in the process, which is looked up for each use. [window thread]
#pragma once

#include <cstdint>

struct pollfd;

namespace Tovra
{
class Clock
{
public:
    virtual ~Clock() = default;

    // Microseconds since some moment in the past; never decreases.
    virtual std::int64_t microseconds() = 0;
    // Waits as poll(2) does, until a descriptor is ready or the milliseconds have passed (-1: for ever), and
    // returns the number of ready descriptors. May return early.
    virtual int wait(pollfd* descriptors, unsigned long count, int milliseconds) = 0;

    static Clock& current();
    // Null restores the machine's clock. The caller keeps ownership.
    static void setCurrent(Clock* clock);
};
}
