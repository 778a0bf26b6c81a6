// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/RunLoop.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Tovra
{
namespace
{
struct Registry
{
    std::vector<RunLoop*> loops; // that are entered, the latest at the end
    std::vector<RunLoop*> turns; // the innermost at the end; null where the loop has been left
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
    const Registry& all = registry();
    if (!all.turns.empty() && all.turns.back() != nullptr)
        return all.turns.back();
    return all.loops.empty() ? nullptr : all.loops.back();
}

void RunLoop::enter(RunLoop& loop)
{
    take(registry().loops, &loop);
    registry().loops.push_back(&loop);
    for (RepeatingTimer* timer : registry().timers)
        if (timer->isStarted() && !timer->isRunning())
            timer->moveTo(&loop);
    for (DescriptorWatch* watch : registry().watches)
        if (watch->descriptor >= 0 && watch->watched == 0)
            watch->moveTo(&loop);
}

void RunLoop::leave(RunLoop& loop)
{
    take(registry().loops, &loop);
    std::replace(registry().turns.begin(), registry().turns.end(), &loop, static_cast<RunLoop*>(nullptr));
    for (RepeatingTimer* timer : registry().timers)
        if (timer->loop == &loop)
            timer->moveTo(current());
    for (DescriptorWatch* watch : registry().watches)
        if (watch->loop == &loop)
            watch->moveTo(current());
}

RunLoop::Turn::Turn(RunLoop& loop)
{
    registry().turns.push_back(&loop);
}

RunLoop::Turn::~Turn()
{
    registry().turns.pop_back();
}

// The callback as loop calls it.
static RunLoop::Callback inTurnOf(RunLoop& loop, const RunLoop::Callback& action)
{
    return [&loop, action]
    {
        const RunLoop::Turn turn(loop);
        action();
    };
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
    timer = next && period != 0 ? next->startTimer(period, inTurnOf(*next, action)) : 0;
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
    watched = next && descriptor >= 0 ? next->watch(descriptor, inTurnOf(*next, action)) : 0;
}
}
