// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/RunLoop.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Tovra
{
namespace
{
// All loops that are entered, the last one being the current one, and all users of loops.
struct Registry
{
    std::vector<RunLoop*> loops;
    std::vector<RepeatingTimer*> timers;
    std::vector<DescriptorWatch*> watches;
};

// Constructed before every loop and timer, static ones too, since their constructors call this; so it is
// destroyed after them.
Registry& registry()
{
    static Registry all;
    return all;
}

template <typename T>
void take(std::vector<T*>& from, T* what)
{
    from.erase(std::remove(from.begin(), from.end(), what), from.end());
}
}

RunLoop::RunLoop()
{
    registry();
}

RunLoop::~RunLoop()
{
    for (RepeatingTimer* timer : registry().timers) // those that still run here end with the loop
        if (timer->loop == this)
            timer->timer = 0;
    for (DescriptorWatch* watch : registry().watches)
        if (watch->loop == this)
            watch->watched = 0;
    leave(*this);
}

RunLoop* RunLoop::current()
{
    const auto& loops = registry().loops;
    return loops.empty() ? nullptr : loops.back();
}

void RunLoop::enter(RunLoop& loop)
{
    auto& loops = registry().loops;
    take(loops, &loop);
    loops.push_back(&loop);
    for (RepeatingTimer* timer : registry().timers)
        timer->moveTo(&loop);
    for (DescriptorWatch* watch : registry().watches)
        watch->moveTo(&loop);
}

void RunLoop::leave(RunLoop& loop)
{
    take(registry().loops, &loop);
    for (RepeatingTimer* timer : registry().timers)
        timer->moveTo(current());
    for (DescriptorWatch* watch : registry().watches)
        watch->moveTo(current());
}

RepeatingTimer::RepeatingTimer()
{
    registry().timers.push_back(this);
}

RepeatingTimer::~RepeatingTimer()
{
    stop();
    take(registry().timers, this);
}

void RepeatingTimer::start(int milliseconds, RunLoop::Callback callback)
{
    stop();
    period = std::max(milliseconds, 1);
    action = std::move(callback);
    moveTo(RunLoop::current());
}

void RepeatingTimer::stop()
{
    period = 0;
    moveTo(nullptr);
}

void RepeatingTimer::moveTo(RunLoop* next)
{
    if (timer != 0 && loop == next)
        return;
    if (timer != 0)
        loop->stopTimer(timer);
    loop = next;
    timer = next && period != 0 ? next->startTimer(period, action) : 0;
}

DescriptorWatch::DescriptorWatch()
{
    registry().watches.push_back(this);
}

DescriptorWatch::~DescriptorWatch()
{
    stop();
    take(registry().watches, this);
}

void DescriptorWatch::start(int watchedDescriptor, RunLoop::Callback callback)
{
    stop();
    descriptor = watchedDescriptor;
    action = std::move(callback);
    moveTo(RunLoop::current());
}

void DescriptorWatch::stop()
{
    moveTo(nullptr);
    descriptor = -1;
}

void DescriptorWatch::moveTo(RunLoop* next)
{
    if (watched != 0 && loop == next)
        return;
    if (watched != 0)
        loop->unwatch(watched);
    loop = next;
    watched = next && descriptor >= 0 ? next->watch(descriptor, action) : 0;
}
}
