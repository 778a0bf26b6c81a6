// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ListenerList.h"
#include "Orbel/parameters/ParameterChangeListener.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using Orbel::ListenerList;
using Orbel::ParameterProperty;

namespace
{
// Writes its letter when called, then does something.
struct Probe : Orbel::ParameterChangeListener
{
    Probe(std::string& calls, char name) : log(calls), letter(name) {}
    void parameterChanged(ParameterProperty*) override
    {
        log += letter;
        if (then)
            then();
    }

    std::string& log;
    char letter;
    std::function<void()> then;
};

class ListenerListTest : public testing::Test
{
protected:
    // What a notification calls, in order.
    std::string calls(Orbel::ParameterChangeListener* except = nullptr)
    {
        log.clear();
        list.notify(nullptr, except);
        return log;
    }

    std::string log;
    Probe a{log, 'a'}, b{log, 'b'}, c{log, 'c'}, d{log, 'd'};
    ListenerList list;
};
}

TEST_F(ListenerListTest, CallsTheLastAddedFirstAndEachOnce)
{
    for (Probe* probe : {&a, &b, &c})
        EXPECT_TRUE(list.add(probe));
    EXPECT_FALSE(list.add(&a));
    EXPECT_FALSE(list.add(nullptr));
    EXPECT_EQ(calls(), "cba");
    EXPECT_EQ(calls(&b), "ca");
    list.forget(&b);
    list.forget(&d);
    EXPECT_EQ(calls(), "ca");
}

TEST_F(ListenerListTest, ChangesFromInsideANotificationTakeEffectInIt)
{
    for (Probe* probe : {&a, &b, &c})
        list.add(probe);
    c.then = [&]
    {
        list.add(&d); // a newer list, but not for this walk
        list.forget(&b);
        list.forget(&c);
        list.add(&b); // back again, and again not for this walk
    };
    EXPECT_EQ(calls(), "ca");
    EXPECT_EQ(calls(), "bda");
}

TEST_F(ListenerListTest, NotificationsNestDeeperThanThereAreSeats)
{
    int depth = 0;
    list.add(&a);
    list.add(&b);
    b.then = [&]
    {
        if (++depth < 40)
            list.notify(nullptr);
        else
            list.forget(&a); // must not wait for its own walks
    };
    EXPECT_EQ(calls(), std::string(40, 'b'));
}

namespace
{
// Counts itself while it is inside a notification, and stays there until it is let go.
struct Gate : Orbel::ParameterChangeListener
{
    void parameterChanged(ParameterProperty*) override
    {
        ++inside;
        while (!open)
            std::this_thread::yield();
        --inside;
    }

    std::atomic<int> inside = 0;
    std::atomic<bool> open = false;
};
}

TEST(ListenerListThreads, ForgetWaitsForEveryThreadInsideAlsoBeyondTheSeats)
{
    ListenerList list;
    Gate gate;
    list.add(&gate);
    std::vector<std::thread> threads;
    for (int i = 0; i < 24; ++i)
        threads.emplace_back([&] { list.notify(nullptr); });
    while (gate.inside < 24)
        std::this_thread::yield();
    threads.emplace_back(
        [&]
        {
            for (int i = 0; i < 200; ++i) // enough time for a forget that does not wait to return
                std::this_thread::yield();
            gate.open = true;
        });
    list.forget(&gate);
    EXPECT_EQ(gate.inside, 0);
    for (std::thread& thread : threads)
        thread.join();
}

namespace
{
thread_local int writer = 0;

// Its memory is plain: a call that overlaps or follows its end is a race or a use after free, which the
// sanitizers see, and a wrong word, which the plain run sees.
struct Mortal : Orbel::ParameterChangeListener
{
    ~Mortal() override { alive = false; }
    void parameterChanged(ParameterProperty*) override
    {
        if (!alive)
            ++callsAfterTheEnd;
        ++calls[writer];
        total.fetch_add(1, std::memory_order_relaxed);
    }

    bool alive = true;
    long calls[3] = {};
    std::atomic<long> total = 0;
    static inline std::atomic<long> callsAfterTheEnd = 0;
};
}

TEST(ListenerListThreads, NobodyIsCalledOnceForgetHasReturned)
{
    ListenerList list;
    Mortal stays;
    list.add(&stays);
    std::atomic<bool> playing = true;
    std::vector<std::thread> writers;
    for (int number = 0; number < 3; ++number)
        writers.emplace_back(
            [&, number]
            {
                writer = number;
                while (playing)
                {
                    for (int i = 0; i < 20; ++i)
                        list.notify(nullptr);
                    std::this_thread::yield(); // gives the processor away here, and so seldom inside
                }
            });

    for (int round = 0; round < 20000; ++round)
    {
        auto guest = std::make_unique<Mortal>();
        auto other = std::make_unique<Mortal>();
        list.add(guest.get());
        list.add(other.get());
        while (round % 10 == 0 && guest->total == 0) // it is really being called
            std::this_thread::yield();
        list.forget(guest.get());
        EXPECT_EQ(guest->calls[0] + guest->calls[1] + guest->calls[2], guest->total);
        guest.reset();
        list.forget(other.get());
    }
    playing = false;
    for (std::thread& thread : writers)
        thread.join();
    EXPECT_EQ(Mortal::callsAfterTheEnd, 0);
    EXPECT_GT(stays.total, 0);
}
