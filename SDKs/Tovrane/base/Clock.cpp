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

Clock* inCharge = nullptr; // null: the machine's own
}

Clock& Clock::current()
{
    static SystemClock machine;
    return inCharge ? *inCharge : machine;
}

void Clock::setCurrent(Clock* clock)
{
    inCharge = clock;
}
}
