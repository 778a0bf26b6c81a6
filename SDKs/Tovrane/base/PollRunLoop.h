// A run loop of one's own, over poll(2): for tools, tests and windows without a host.
//
// It reads the time from Clock::current() and lets that clock wait, so that a test with a clock of its own
// takes no time. A period that was missed is not made up for: one call, then the next full period.
#pragma once

#include "Tovrane/base/RunLoop.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace Tovra
{
// [window thread]  Not current before it has been entered.
class PollRunLoop : public RunLoop
{
public:
    PollRunLoop() = default;
    ~PollRunLoop() override;

    TimerId startTimer(int milliseconds, Callback callback) override;
    void stopTimer(TimerId timer) override;
    // One whose descriptor turns out to be closed is given up.
    WatchId watch(int descriptor, Callback callback) override;
    void unwatch(WatchId watched) override;

    // Until stop(). Returns, too, when there is neither a timer nor a watch left to wait for.
    void run();
    // Until so much time has passed, or stop().
    void runFor(int milliseconds);
    // One wait, of at most so many milliseconds, and the calls that are due after it. False if none was.
    bool runOnce(int milliseconds);
    // Ends the run that is under way after the present callback, or, before one, the next run at once.
    void stop() { stopped = true; }

private:
    struct Timer
    {
        TimerId id; // 0: stopped
        std::int64_t period;
        std::int64_t due; // both in microseconds
        Callback callback;
    };
    struct Watch
    {
        WatchId id; // 0: given up
        int descriptor;
        Callback callback;
    };
    using Timers = std::vector<std::shared_ptr<Timer>>;
    using Watches = std::vector<std::shared_ptr<Watch>>;

    Watches wait(int milliseconds);
    bool callDueTimers();
    int untilNextTimer(int atMost) const;

    Timers timers;
    Watches watches;
    unsigned long lastId = 0;
    bool stopped = false;
};
}
