// SPDX-License-Identifier: GPL-3.0-or-later
// The listeners of one parameter: told from any thread, changed on the window thread meanwhile.
//
// A notifying thread, which may be the audio thread, never waits, locks, allocates or calls the system.
// forget() waits instead, so that nobody is called once it has returned. How the two meet:
//
//   - The list is an immutable snapshot behind an atomic pointer. A change publishes a new snapshot and
//     retires the old one. All snapshots share their entries, so that emptying an entry takes effect in
//     walks that are under way on older snapshots too.
//   - A notifying thread writes its id into a free seat, THEN loads the snapshot. forget() publishes the
//     new snapshot, THEN looks at the seats. All four steps are seq_cst, so they have one order: either
//     forget() sees the seat and waits until it has been left, or that thread loaded the new snapshot.
//   - Seats of the thread that forgets are not waited for: a listener may forget itself and others from
//     inside a notification, and they are skipped in the rest of that walk.
//   - Retired snapshots are freed once every seat was seen empty after they were retired.
//
// Two threads must not forget from inside notifications of the same list at the same time: each would
// wait for the other. Threads that come in when all seats are taken are only counted; such a thread must not
// forget from inside.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace Orbel
{
class ParameterChangeListener;
class ParameterProperty;

class ListenerList
{
public:
    ListenerList() = default;
    ListenerList(const ListenerList&) = delete;
    ListenerList& operator=(const ListenerList&) = delete;
    // No notification may be under way.
    ~ListenerList();

    // [window thread]  Appends the listener, which stays the caller's. False if it is in the list already
    // or null. A notification under way does not call it.
    bool add(ParameterChangeListener* listener);
    // [window thread]  Removes the listener, if it is in the list, and waits until no other thread can
    // still be calling it.
    void forget(ParameterChangeListener* listener);
    // [any thread]  Calls all listeners but the excepted one, the last added first.
    void notify(ParameterProperty* property, ParameterChangeListener* except = nullptr);

private:
    struct Entry
    {
        explicit Entry(ParameterChangeListener* first) : listener(first) {}
        std::atomic<ParameterChangeListener*> listener; // null once it was forgotten
    };
    using Snapshot = std::vector<std::shared_ptr<Entry>>;
    using RetiredSnapshots = std::vector<std::unique_ptr<const Snapshot>>;

    struct Seat
    {
        std::atomic<std::thread::id> holder{std::thread::id()}; // of no thread: the seat is free
        std::atomic<std::uint32_t> uses{0};                     // how often it has been left
    };
    static_assert(std::atomic<std::thread::id>::is_always_lock_free);

    class Visit;

    Seat* takeFreeSeat(std::thread::id thread);
    bool isSeated(std::thread::id thread) const;
    bool isNobodyInside() const;
    void waitForOtherThreads() const;
    void publish(std::unique_ptr<const Snapshot> next);
    void remove(ParameterChangeListener* listener);

    std::atomic<const Snapshot*> current{nullptr}; // null: no listeners
    std::array<Seat, 16> seats;
    std::atomic<std::uint32_t> standing{0}; // threads inside that found no seat
    std::mutex changing;                    // held neither while waiting nor while calling anybody
    RetiredSnapshots retired;               // guarded by changing
};
}
