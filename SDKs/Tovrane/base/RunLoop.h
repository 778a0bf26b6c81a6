// The seam of time: repeating timers and watched file descriptors on the window thread's event loop.
//
// Who runs the loop depends on where the plug-in lives: the host's own loop, the host's idle call, or a
// PollRunLoop in tools and tests. Whoever has a loop enters it; the last one that was entered and is still
// there is the current one. There may be none.
//
// Users take a RepeatingTimer or a DescriptorWatch, which move along when the current loop changes. All of
// this belongs to the window thread.
#pragma once

#include <functional>

namespace Tovra
{
class RunLoop
{
public:
    using Callback = std::function<void()>;
    // Of a timer or a watch, never given twice by one loop. 0 is none.
    using TimerId = unsigned long;
    using WatchId = unsigned long;

    RunLoop();
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;
    // Leaves, if need be. A loop that needs itself whole to stop its timers leaves in its own destructor.
    virtual ~RunLoop();

    // Calls back every so many milliseconds (at least 1), first after one period. 0 if there can be no timer.
    virtual TimerId startTimer(int milliseconds, Callback callback) = 0;
    // From here on it is not called. A callback may stop its own timer, and lives until it has returned.
    // Unknown ids are ignored.
    virtual void stopTimer(TimerId timer) = 0;
    // Calls back whenever the descriptor is readable, or has failed. 0 if that cannot be.
    virtual WatchId watch(int descriptor, Callback callback) = 0;
    // As stopTimer.
    virtual void unwatch(WatchId watched) = 0;

    // Null if there is none.
    static RunLoop* current();
    // Makes loop the current one. Entering one that is in moves it to the front.
    static void enter(RunLoop& loop);
    // The one that was current before it takes over, if there is one.
    static void leave(RunLoop& loop);
};

// A repeating timer on whichever loop is the current one.
class RepeatingTimer
{
public:
    RepeatingTimer();
    ~RepeatingTimer();
    RepeatingTimer(const RepeatingTimer&) = delete;
    RepeatingTimer& operator=(const RepeatingTimer&) = delete;

    // In place of what was started before, from inside a callback, too. Without a loop it begins to run once
    // there is one.
    void start(int milliseconds, RunLoop::Callback callback);
    void stop();

    // Started, whether or not there is a loop to run on.
    bool isStarted() const { return period != 0; }
    // On a loop: it will be called.
    bool isRunning() const { return timer != 0; }

private:
    friend class RunLoop;
    void moveTo(RunLoop* next);

    int period = 0; // 0: stopped
    RunLoop::Callback action;
    RunLoop* loop = nullptr;
    RunLoop::TimerId timer = 0; // on loop
};

// A watch on a descriptor that moves along in the same way.
class DescriptorWatch
{
public:
    DescriptorWatch();
    ~DescriptorWatch();
    DescriptorWatch(const DescriptorWatch&) = delete;
    DescriptorWatch& operator=(const DescriptorWatch&) = delete;

    // In place of what was started before. Without a loop it begins to watch once there is one. The
    // descriptor stays the caller's, and open until stop.
    void start(int watchedDescriptor, RunLoop::Callback callback);
    void stop();

private:
    friend class RunLoop;
    void moveTo(RunLoop* next);

    int descriptor = -1; // -1: stopped
    RunLoop::Callback action;
    RunLoop* loop = nullptr;
    RunLoop::WatchId watched = 0; // on loop
};
}
