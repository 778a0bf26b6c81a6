// SPDX-License-Identifier: GPL-3.0-or-later
// A run loop over poll(2), for tools, tests and windows without a host.
//
// It uses Clock::current() to tell the time and to wait, so that a test with a clock of its own takes no
// time. Missed timer periods are not made up for: there is one call, and the next one a full period later.
#pragma once

#include "Tovrane/base/RunLoop.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace Tovra
{
// [window thread]  It has to be entered to become the current loop.
class PollRunLoop : public RunLoop
{
public:
    PollRunLoop() = default;
    ~PollRunLoop() override;

    TimerId startTimer(int milliseconds, Callback callback) override;
    void stopTimer(TimerId timer) override;
    // A watch is dropped when its descriptor turns out to be closed.
    WatchId watch(int descriptor, Callback callback) override;
    void unwatch(WatchId watched) override;

    // Runs until stop() is called, or until no timer and no watch is left.
    void run();
    // Runs for the time given, or until stop() is called.
    void runFor(int milliseconds);
    // Runs until isSo answers true, which is asked before and after each round; else like run().
    void runUntil(const std::function<bool()>& isSo);
    // Waits once, at most for the time given, and makes the calls that are then due. False if there were
    // none.
    bool runOnce(int milliseconds);
    // Ends the present run after the callback that is being called, or, outside of a run, ends the next one
    // immediately.
    void stop() { stopped = true; }

private:
    struct Timer
    {
        TimerId id; // 0 once stopped
        std::int64_t period;
        std::int64_t due; // both in microseconds
        Callback callback;
    };
    struct Watch
    {
        WatchId id; // 0 once dropped
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
