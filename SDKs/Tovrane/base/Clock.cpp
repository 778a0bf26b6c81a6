// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/Clock.h"

#include <chrono>
#include <poll.h>

namespace Tovra
{
namespace
{
class SystemClock : public Clock
{
public:
    std::int64_t microseconds() override
    {
        using namespace std::chrono;
        return duration_cast<std::chrono::microseconds>(steady_clock::now().time_since_epoch()).count();
    }

    int wait(pollfd* descriptors, unsigned long count, int milliseconds) override
    {
        return ::poll(descriptors, count, milliseconds);
    }
};

Clock* testClock = nullptr; // null for the machine's clock
}

Clock& Clock::current()
{
    static SystemClock machine;
    return testClock ? *testClock : machine;
}

void Clock::setCurrent(Clock* clock)
{
    testClock = clock;
}
}
