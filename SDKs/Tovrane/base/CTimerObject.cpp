// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/CTimerObject.h"

#include "CORE/CriticalSection.h"
#include "Tovrane/base/Clock.h"
#include "Tovrane/base/RunLoop.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace Tovra
{
using Core::Threads::CriticalSection;
using Core::Threads::SectionGuard;

struct CTimerListItem
{
    CTimerObject* object;   // null once it is destroyed
    std::int64_t period;    // milliseconds
    std::int64_t remaining; // ticks
    std::int64_t reload;    // ticks of a period
    bool removed;           // to be deleted at the next tick
};

// Guarded by the timer lock, which onTimer may enter again on the same thread.
class TimerList
{
public:
    bool add(CTimerObject* object, std::int64_t period, bool callNow);
    void remove(const CTimerObject* object);
    void forget(const CTimerObject* object);
    void stop() { platformTimer.stop(); }
    // The callback of the platform timer.
    void tick();

private:
    CTimerListItem* find(const CTimerObject* object);
    std::int64_t shortestPeriod() const;
    void setBasePeriod(std::int64_t period);
    void callDueItems();

    CriticalSection lock;
    std::vector<CTimerListItem> items;
    RepeatingTimer platformTimer;
    std::int64_t basePeriod = 1; // milliseconds
    bool ticking = false;
};

static TimerList __gTovra_TimerItemList;

static void __Tovra_TimerItemListCallback()
{
    __gTovra_TimerItemList.tick();
}

// Defined after the list, so that it is destroyed first when the plug-in is unloaded.
static struct _CTimterAutoRelease
{
    ~_CTimterAutoRelease() { __gTovra_TimerItemList.stop(); }
} timerAutoRelease;

std::int64_t Tovra_getTicks()
{
    constexpr std::int64_t ticksOfSecond = 60;
    const std::int64_t ticks = Clock::current().microseconds() * ticksOfSecond / 1000000;
    return ticks * 1000 / ticksOfSecond;
}

bool TimerList::add(CTimerObject* object, std::int64_t period, bool callNow)
{
    const SectionGuard guard(lock);
    if (period < shortestPeriod() || !platformTimer.isStarted())
        setBasePeriod(period);

    const std::int64_t ticks = period / basePeriod;
    if (CTimerListItem* const known = find(object))
        *known = {object, period, ticks, ticks, false};
    else
        items.push_back({object, period, ticks, ticks, false});

    if (callNow)
        object->onTimer(0);
    if (find(object)) // unless it has removed itself
        object->lastTick = Tovra_getTicks();
    return platformTimer.isRunning();
}

CTimerListItem* TimerList::find(const CTimerObject* object)
{
    const auto found = std::find_if(items.begin(), items.end(),
                                    [object](const auto& item) { return item.object == object; });
    return found == items.end() ? nullptr : &*found;
}

std::int64_t TimerList::shortestPeriod() const
{
    std::int64_t shortest = std::numeric_limits<std::int64_t>::max();
    for (const auto& item : items)
        shortest = std::min(shortest, item.period);
    return shortest;
}

void TimerList::setBasePeriod(std::int64_t period)
{
    basePeriod = period;
    for (auto& item : items)
        item.remaining = item.reload = item.period / basePeriod;
    platformTimer.start(int(std::min<std::int64_t>(period, std::numeric_limits<int>::max())),
                        __Tovra_TimerItemListCallback);
}

void TimerList::remove(const CTimerObject* object)
{
    const SectionGuard guard(lock);
    CTimerListItem* const item = find(object);
    if (!item)
        return;
    if (items.size() > 1)
    {
        item->removed = true;
        return;
    }
    platformTimer.stop();
    items.clear();
}

// The object is about to be destroyed.
void TimerList::forget(const CTimerObject* object)
{
    const SectionGuard guard(lock);
    remove(object);
    if (CTimerListItem* const item = find(object))
        item->object = nullptr;
}

void TimerList::tick()
{
    if (!lock.tryEnter())
        return;
    if (!ticking) // otherwise an onTimer runs the event loop
    {
        ticking = true;
        std::erase_if(items, [](const auto& item) { return item.removed; });
        if (items.empty())
            platformTimer.stop();
        callDueItems();
        ticking = false;
    }
    lock.leave();
}

// Items that are added meanwhile come after the first count ones. Single items are only marked as removed.
void TimerList::callDueItems()
{
    const std::int64_t now = Tovra_getTicks();
    const size_t count = items.size();
    for (size_t i = 0; i < count && i < items.size(); ++i)
    {
        CTimerObject* const object = items[i].object;
        if (!object || items[i].removed || --items[i].remaining >= 1)
            continue;
        object->onTimer(int(now - object->lastTick));
        if (items.empty())
            return;
        if (items[i].object != object || items[i].removed)
            continue;
        object->lastTick = now;
        items[i].remaining = items[i].reload;
    }
}

CTimerObject::~CTimerObject()
{
    __gTovra_TimerItemList.forget(this);
}

bool RegisterTimerObject(CTimerObject* object, long periodMs, bool callNow)
{
    return object && __gTovra_TimerItemList.add(object, std::max(periodMs, 1L), callNow);
}

bool RemoveTimerObject(CTimerObject* object)
{
    __gTovra_TimerItemList.remove(object);
    return true;
}
}
