// Where time comes from and how it is waited for: the machine's own clock, or that of a test, in which
// waiting takes no time.
//
// The clock in charge is process-wide. Whoever wants a time asks current() each time. [window thread]
#pragma once

#include <cstdint>

struct pollfd;

namespace Tovra
{
class Clock
{
public:
    virtual ~Clock() = default;

    // Microseconds since some moment in the past; never runs backwards.
    virtual std::int64_t microseconds() = 0;
    // Until something happens on one of the descriptors or milliseconds are over, as poll(2) has it: -1 waits
    // for ever, the result is the number of descriptors with something to tell. May return early.
    virtual int wait(pollfd* descriptors, unsigned long count, int milliseconds) = 0;

    static Clock& current();
    // Null puts the machine's own back in charge. The clock stays the caller's.
    static void setCurrent(Clock* clock);
};
}
