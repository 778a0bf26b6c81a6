// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ListenerList.h"

#include "Orbel/parameters/ParameterChangeListener.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace Orbel
{
// A thread's stay inside the list, from before it loads the snapshot until after its last call.
class ListenerList::Visit
{
public:
    explicit Visit(ListenerList& visited)
        : list(visited),
          seat(visited.takeFreeSeat(std::this_thread::get_id())),
          stands(!seat && !visited.isSeated(std::this_thread::get_id()))
    {
        if (stands)
            list.standing.fetch_add(1); // seq_cst: before the snapshot is loaded
    }

    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

    // Release: what the listeners did is seen by the thread that sees the seat left.
    ~Visit()
    {
        if (seat)
        {
            seat->uses.fetch_add(1, std::memory_order_release);
            seat->holder.store(std::thread::id(), std::memory_order_release);
        }
        else if (stands)
            list.standing.fetch_sub(1, std::memory_order_release);
    }

private:
    ListenerList& list;
    Seat* seat;
    bool stands; // neither this visit nor one around it has a seat
};

namespace
{
// Lets the others run: first for a moment, then for longer and longer ones that cost no processor time.
template <typename Condition>
void waitUntil(Condition condition)
{
    for (int tries = 0; !condition(); ++tries)
        if (tries < 64)
            std::this_thread::yield();
        else
            std::this_thread::sleep_for(std::chrono::microseconds(30));
}
}

ListenerList::~ListenerList()
{
    delete current.load();
}

bool ListenerList::add(ParameterChangeListener* listener)
{
    const std::lock_guard lock(changing);
    const Snapshot* now = current.load();
    auto next = now ? std::make_unique<Snapshot>(*now) : std::make_unique<Snapshot>();
    const bool known = std::any_of(next->begin(), next->end(),
                                   [=](const auto& entry) { return entry->listener.load() == listener; });
    if (!listener || known)
        return false;
    next->push_back(std::make_shared<Entry>(listener));
    publish(std::move(next));
    if (isNobodyInside())
        retired.clear();
    return true;
}

void ListenerList::forget(ParameterChangeListener* listener)
{
    RetiredSnapshots leaving;
    {
        const std::lock_guard lock(changing);
        remove(listener);
        leaving.swap(retired);
    }
    waitForOtherThreads(); // also for an unknown listener: another thread may be just forgetting it
    if (isSeated(std::this_thread::get_id()))
    {
        const std::lock_guard lock(changing); // our own walk still goes through one of them
        std::move(leaving.begin(), leaving.end(), std::back_inserter(retired));
    }
}

void ListenerList::notify(ParameterProperty* property, ParameterChangeListener* except)
{
    if (!current.load(std::memory_order_relaxed))
        return;
    const Visit visit(*this);
    const Snapshot* snapshot = current.load(); // seq_cst: after the seat was taken
    if (!snapshot)
        return;
    for (auto entry = snapshot->rbegin(); entry != snapshot->rend(); ++entry)
    {
        ParameterChangeListener* listener = (*entry)->listener.load();
        if (listener && listener != except)
            listener->parameterChanged(property);
    }
}

ListenerList::Seat* ListenerList::takeFreeSeat(std::thread::id thread)
{
    for (Seat& seat : seats)
    {
        std::thread::id nobody;
        if (seat.holder.load(std::memory_order_relaxed) == nobody &&
            seat.holder.compare_exchange_strong(nobody, thread)) // seq_cst
            return &seat;
    }
    return nullptr;
}

bool ListenerList::isSeated(std::thread::id thread) const
{
    return std::any_of(seats.begin(), seats.end(), [=](const Seat& seat) { return seat.holder == thread; });
}

bool ListenerList::isNobodyInside() const
{
    return standing == 0 && std::all_of(seats.begin(), seats.end(),
                                        [](const Seat& seat) { return seat.holder == std::thread::id(); });
}

void ListenerList::waitForOtherThreads() const
{
    const std::thread::id nobody, self = std::this_thread::get_id();
    for (const Seat& seat : seats)
    {
        const std::thread::id holder = seat.holder; // before its uses: so they are those of this holder
        if (holder == nobody || holder == self)
            continue;
        waitUntil([&seat, nobody, uses = seat.uses.load()]
                  { return seat.holder == nobody || seat.uses != uses; });
    }
    waitUntil([this] { return standing == 0; });
}

void ListenerList::publish(std::unique_ptr<const Snapshot> next)
{
    if (current.load())
        retired.emplace_back(current.load());
    current.store(next.release()); // seq_cst: before the seats are looked at
}

void ListenerList::remove(ParameterChangeListener* listener)
{
    const Snapshot* now = current.load();
    if (!now)
        return;
    auto next = std::make_unique<Snapshot>(*now);
    const auto gone = std::remove_if(next->begin(), next->end(),
                                     [=](const auto& entry) { return entry->listener.load() == listener; });
    if (gone == next->end())
        return;
    next->erase(gone, next->end());
    for (const auto& entry : *now)
        if (entry->listener.load() == listener)
            entry->listener.store(nullptr);
    publish(next->empty() ? nullptr : std::move(next));
}
}
