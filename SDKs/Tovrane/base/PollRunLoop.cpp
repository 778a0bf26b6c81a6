// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/PollRunLoop.h"

#include "Tovrane/base/Clock.h"

#include <algorithm>
#include <poll.h>

namespace Tovra
{
namespace
{
constexpr std::int64_t microsecondsPerMillisecond = 1000;

template <typename T>
void drop(std::vector<std::shared_ptr<T>>& from, unsigned long id)
{
    const auto found =
        std::find_if(from.begin(), from.end(), [id](const auto& entry) { return entry->id == id; });
    if (found == from.end())
        return;
    (*found)->id = 0; // for loops over a copy of the list
    from.erase(found);
}
}

PollRunLoop::~PollRunLoop()
{
    leave(*this);
}

RunLoop::TimerId PollRunLoop::startTimer(int milliseconds, Callback callback)
{
    const std::int64_t period = std::max(milliseconds, 1) * microsecondsPerMillisecond;
    const std::int64_t due = Clock::current().microseconds() + period;
    timers.push_back(std::make_shared<Timer>(Timer{++lastId, period, due, std::move(callback)}));
    return lastId;
}

void PollRunLoop::stopTimer(TimerId timer)
{
    drop(timers, timer);
}

RunLoop::WatchId PollRunLoop::watch(int descriptor, Callback callback)
{
    if (descriptor < 0)
        return 0;
    watches.push_back(std::make_shared<Watch>(Watch{++lastId, descriptor, std::move(callback)}));
    return lastId;
}

void PollRunLoop::unwatch(WatchId watched)
{
    drop(watches, watched);
}

void PollRunLoop::run()
{
    runUntil([] { return false; });
}

void PollRunLoop::runUntil(const std::function<bool()>& isSo)
{
    while (!stopped && !isSo() && !(timers.empty() && watches.empty()))
        runOnce(-1);
    stopped = false;
}

void PollRunLoop::runFor(int milliseconds)
{
    const std::int64_t end = Clock::current().microseconds() + milliseconds * microsecondsPerMillisecond;
    while (!stopped)
    {
        const std::int64_t left = end - Clock::current().microseconds();
        if (left <= 0)
            break;
        runOnce(int((left + microsecondsPerMillisecond - 1) / microsecondsPerMillisecond));
    }
    stopped = false;
}

bool PollRunLoop::runOnce(int milliseconds)
{
    if (milliseconds < 0 && timers.empty() && watches.empty())
        return false;
    bool called = false;
    for (const auto& ready : wait(untilNextTimer(milliseconds)))
        if (ready->id != 0 && !stopped)
        {
            ready->callback();
            called = true;
        }
    return callDueTimers() || called;
}

// In milliseconds, at most atMost. -1 means for ever, in the argument and in the answer.
int PollRunLoop::untilNextTimer(int atMost) const
{
    if (timers.empty())
        return atMost;
    const auto next = std::min_element(timers.begin(), timers.end(),
                                       [](const auto& a, const auto& b) { return a->due < b->due; });
    const std::int64_t left = std::max<std::int64_t>((*next)->due - Clock::current().microseconds(), 0);
    const int milliseconds = int((left + microsecondsPerMillisecond - 1) / microsecondsPerMillisecond);
    return atMost < 0 ? milliseconds : std::min(milliseconds, atMost);
}

// Returns the watches whose descriptors are ready.
PollRunLoop::Watches PollRunLoop::wait(int milliseconds)
{
    const Watches waiting = watches;
    std::vector<pollfd> descriptors;
    for (const auto& entry : waiting)
        descriptors.push_back({entry->descriptor, POLLIN, 0});

    Watches ready;
    if (Clock::current().wait(descriptors.data(), descriptors.size(), milliseconds) <= 0)
        return ready;
    for (size_t i = 0; i < waiting.size(); ++i)
    {
        if (descriptors[i].revents & POLLNVAL) // closed meanwhile: poll would return at once for ever
            drop(watches, waiting[i]->id);
        else if (descriptors[i].revents != 0)
            ready.push_back(waiting[i]);
    }
    return ready;
}

bool PollRunLoop::callDueTimers()
{
    bool called = false;
    const std::int64_t now = Clock::current().microseconds();
    for (const auto& timer : Timers(timers))
    {
        if (timer->id == 0 || timer->due > now || stopped)
            continue;
        timer->due += timer->period;
        if (timer->due <= now)
            timer->due = now + timer->period;
        timer->callback();
        called = true;
    }
    return called;
}
}
