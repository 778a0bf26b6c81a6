// SPDX-License-Identifier: GPL-3.0-or-later
// The interface to the window thread's event loop: repeating timers and watched file descriptors.
//
// The loop is the host's own, or driven by the host's idle call, or a PollRunLoop in tools and tests. There
// may be several at the same time, one for each host that shows a window. The owner of a loop enters it, and
// leaves it when the host no longer runs it. The current loop is the one whose turn it is (Turn), or else the
// last one entered; there may be none.
//
// Use RepeatingTimer and DescriptorWatch: they stay on the loop that was current when they were started, so
// that what belongs to a window is driven by that window's own host. When that loop is left they go on in
// another one.
// [window thread]
#pragma once

#include <functional>

namespace Tovra
{
class RunLoop
{
public:
    using Callback = std::function<void()>;
    // Identify a timer or a watch; a loop never gives the same one twice. 0 means none.
    using TimerId = unsigned long;
    using WatchId = unsigned long;

    RunLoop();
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;
    // Leaves the loop if it is still entered. The derived object is destroyed by then, so stopTimer and
    // unwatch are not called for what is left on it; a loop that wants these calls leaves in its own
    // destructor.
    virtual ~RunLoop();

    // Calls back with that period (at least 1), for the first time after one period. 0 on failure.
    virtual TimerId startTimer(int milliseconds, Callback callback) = 0;
    // The callback is not called any more. It may stop its own timer, and is not destroyed before it returns.
    // Unknown ids are ignored.
    virtual void stopTimer(TimerId timer) = 0;
    // Calls back whenever the descriptor is readable or has failed. 0 on failure.
    virtual WatchId watch(int descriptor, Callback callback) = 0;
    // Like stopTimer.
    virtual void unwatch(WatchId watched) = 0;

    // May be null.
    static RunLoop* current();
    // Makes loop the current one, also if it was entered before. What waits for a loop starts on it.
    static void enter(RunLoop& loop);
    // The loop entered before it becomes the current one again, also for what still runs on this one.
    static void leave(RunLoop& loop);

    // While it exists, its loop is the current one. Callbacks of timers and watches run inside of one;
    // whoever passes a host's call on to a window puts one around it. The loop may be left or destroyed
    // meanwhile.
    class Turn
    {
    public:
        explicit Turn(RunLoop& loop);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
    };
};

// A repeating timer on the loop that is current when it is started.
class RepeatingTimer
{
public:
    RepeatingTimer();
    ~RepeatingTimer();
    RepeatingTimer(const RepeatingTimer&) = delete;
    RepeatingTimer& operator=(const RepeatingTimer&) = delete;

    // Replaces what was started before; a callback may do so, too. Without a loop, the timer starts when
    // one is entered.
    void start(int milliseconds, RunLoop::Callback callback);
    void stop();

    // Whether it was started, with or without a loop.
    bool isStarted() const { return period != 0; }
    // Whether it is on a loop, so that it will be called.
    bool isRunning() const { return timer != 0; }

private:
    friend class RunLoop;
    void moveTo(RunLoop* next);

    int period = 0; // milliseconds; 0 while stopped
    RunLoop::Callback action;
    RunLoop* loop = nullptr;
    RunLoop::TimerId timer = 0; // on loop
};

// A watched descriptor on the loop that is current when it is started.
class DescriptorWatch
{
public:
    DescriptorWatch();
    ~DescriptorWatch();
    DescriptorWatch(const DescriptorWatch&) = delete;
    DescriptorWatch& operator=(const DescriptorWatch&) = delete;

    // Replaces what was started before. Without a loop, it starts to watch when one is entered. The caller
    // owns the descriptor and keeps it open until stop.
    void start(int watchedDescriptor, RunLoop::Callback callback);
    void stop();

private:
    friend class RunLoop;
    void moveTo(RunLoop* next);

    int descriptor = -1; // -1 while stopped
    RunLoop::Callback action;
    RunLoop* loop = nullptr;
    RunLoop::WatchId watched = 0; // on loop
};
}
