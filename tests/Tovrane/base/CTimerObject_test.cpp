// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/CTimerObject.h"
#include "Tovrane/base/RunLoop.h"
#include "Tovrane/base/VirtualClock.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

using Tovra::RegisterTimerObject;
using Tovra::RemoveTimerObject;
using Tovra::VirtualClock;

namespace
{
// A loop for one timer, which the test fires.
class HandLoop : public Tovra::RunLoop
{
public:
    ~HandLoop() override { leave(*this); }

    TimerId startTimer(int milliseconds, Callback callback) override
    {
        EXPECT_EQ(running, 0u) << "two platform timers at once";
        periods.push_back(milliseconds);
        action = std::move(callback);
        return running = ++lastId;
    }
    void stopTimer(TimerId timer) override
    {
        EXPECT_EQ(timer, running);
        running = 0;
    }
    WatchId watch(int, Callback) override { return 0; }
    void unwatch(WatchId) override {}

    void fire() const
    {
        const Callback kept = action; // it may start the timer anew
        kept();
    }

    std::vector<int> periods; // of all timers so far
    TimerId running = 0;

private:
    Callback action;
    TimerId lastId = 0;
};

class Timed : public Tovra::CTimerObject
{
public:
    void onTimer(int milliseconds) override
    {
        elapsed.push_back(milliseconds);
        const auto kept = then; // it may destroy this object
        if (kept)
            kept();
    }

    std::vector<int> elapsed;
    std::function<void()> then;
};

using Calls = std::vector<int>;
}

class CTimerObjectTest : public testing::Test
{
protected:
    CTimerObjectTest() { Tovra::RunLoop::enter(loop); }
    ~CTimerObjectTest() override
    {
        if (loop.running != 0)
            tick(); // deletes what the test has removed
        EXPECT_EQ(loop.running, 0u) << "nothing ticks for an empty list";
    }

    void tick(int times = 1)
    {
        for (int i = 0; i < times; ++i)
        {
            clock.advance(loop.periods.back());
            loop.fire();
        }
    }

    VirtualClock clock;
    HandLoop loop;
};

TEST_F(CTimerObjectTest, CountsPeriodsInTicksOfTheShortestOne)
{
    Timed slow, odd, fast;
    EXPECT_TRUE(RegisterTimerObject(&slow, 200, false));
    EXPECT_TRUE(RegisterTimerObject(&odd, 250, false));
    EXPECT_EQ(loop.periods, Calls({200}));
    tick(2);
    EXPECT_EQ(slow.elapsed, Calls({200, 200}));
    EXPECT_EQ(odd.elapsed, Calls({200, 200})) << "250 / 200 is one tick";

    EXPECT_TRUE(RegisterTimerObject(&fast, 100, false));
    EXPECT_EQ(loop.periods, Calls({200, 100})) << "the tick gets faster, and all counts with it";
    tick(4);
    EXPECT_EQ(fast.elapsed, Calls({100, 100, 100, 100}));
    EXPECT_EQ(slow.elapsed, Calls({200, 200, 200, 200}));
    EXPECT_EQ(odd.elapsed, slow.elapsed) << "250 / 100 is two ticks";

    RemoveTimerObject(&fast);
    tick(2);
    EXPECT_EQ(fast.elapsed.size(), 4u);
    EXPECT_EQ(slow.elapsed.size(), 5u);
    EXPECT_EQ(loop.periods, Calls({200, 100})) << "the tick does not get slower again";
}

TEST_F(CTimerObjectTest, StopsThePlatformTimerWithTheLastOne)
{
    Timed first, other;
    RegisterTimerObject(&first, 50, false);
    EXPECT_TRUE(RemoveTimerObject(&other)) << "a stranger is ignored";
    EXPECT_NE(loop.running, 0u);
    EXPECT_TRUE(RemoveTimerObject(&first));
    EXPECT_EQ(loop.running, 0u);
    RegisterTimerObject(&first, 400, false);
    EXPECT_EQ(loop.periods, Calls({50, 400})) << "with the new period as the tick";
    RemoveTimerObject(&first);
    EXPECT_TRUE(first.elapsed.empty());
    RegisterTimerObject(&first, 0, false);
    EXPECT_EQ(loop.periods.back(), 1) << "no period is the shortest one";
    EXPECT_FALSE(RegisterTimerObject(nullptr, 10, true));
}

TEST_F(CTimerObjectTest, TakesANewPeriodWhenItIsRegisteredAgain)
{
    Timed timed, tickGiver;
    RegisterTimerObject(&tickGiver, 100, false);
    RegisterTimerObject(&timed, 100, true);
    RegisterTimerObject(&timed, 300, false);
    tick(3);
    EXPECT_EQ(timed.elapsed, Calls({0, 300})) << "once at once, then by the new period alone";
    RemoveTimerObject(&timed);
    RegisterTimerObject(&timed, 200, false);
    tick(2);
    EXPECT_EQ(timed.elapsed, Calls({0, 300, 200})) << "registered again before it was deleted";
}

TEST_F(CTimerObjectTest, SurvivesWhateverOnTimerDoesToTheList)
{
    auto doomed = std::make_unique<Timed>();
    auto suicidal = std::make_unique<Timed>();
    Timed killer, leaver, steady, added;
    killer.then = [&] { doomed.reset(); };
    suicidal->then = [&] { suicidal.reset(); };
    leaver.then = [&] { RemoveTimerObject(&leaver); };
    steady.then = [&]
    {
        if (steady.elapsed.size() == 1)
            RegisterTimerObject(&added, 50, false);
    };
    for (Timed* timed : {&killer, doomed.get(), suicidal.get(), &leaver, &steady})
        RegisterTimerObject(timed, 50, false);
    tick(3);
    EXPECT_FALSE(doomed);
    EXPECT_FALSE(suicidal);
    EXPECT_EQ(killer.elapsed, Calls({50, 50, 50}));
    EXPECT_EQ(leaver.elapsed, Calls({50}));
    EXPECT_EQ(steady.elapsed, Calls({50, 50, 50}));
    EXPECT_EQ(added.elapsed, Calls({50, 50})) << "not in the tick that it was added in";
}

TEST_F(CTimerObjectTest, MayStopOrRenewTheOnlyTimerFromWithin)
{
    Timed only;
    only.then = [&]
    {
        RemoveTimerObject(&only);
        if (only.elapsed.size() < 2)
            RegisterTimerObject(&only, 100, false);
    };
    RegisterTimerObject(&only, 50, false);
    tick(2);
    EXPECT_EQ(only.elapsed, Calls({50, 100}));
    EXPECT_EQ(loop.running, 0u);
}

TEST_F(CTimerObjectTest, SkipsATickWhileAnotherIsUnderWay)
{
    Timed busy;
    busy.then = [&]
    {
        loop.fire();                              // an event loop within an event loop
        std::thread([&] { loop.fire(); }).join(); // the lock is taken: the tick must not wait for it
    };
    RegisterTimerObject(&busy, 50, false);
    tick();
    EXPECT_EQ(busy.elapsed, Calls({50}));
    tick();
    EXPECT_EQ(busy.elapsed, Calls({50, 50}));
}

TEST_F(CTimerObjectTest, WaitsForALoop)
{
    Tovra::RunLoop::leave(loop);
    Timed timed;
    EXPECT_FALSE(RegisterTimerObject(&timed, 50, false));
    Tovra::RunLoop::enter(loop);
    tick();
    EXPECT_EQ(timed.elapsed.size(), 1u);
}

TEST_F(CTimerObjectTest, GivesTimeInSixtiethsOfASecond)
{
    for (const auto& [microseconds, ticks] :
         {std::pair(16666L, 0L), {16667L, 16L}, {49999L, 33L}, {50000L, 50L}, {86400000000L, 86400000L}})
    {
        clock.setMicroseconds(microseconds);
        EXPECT_EQ(Tovra::Tovra_getTicks(), ticks) << microseconds;
    }
}
