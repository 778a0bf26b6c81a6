// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/base/VirtualClock.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

using Tovra::DescriptorWatch;
using Tovra::PollRunLoop;
using Tovra::RepeatingTimer;
using Tovra::RunLoop;
using Tovra::VirtualClock;

namespace
{
class Pipe
{
public:
    Pipe()
    {
        if (pipe(ends.data()) != 0)
            throw std::runtime_error("no pipe");
    }
    ~Pipe()
    {
        close(ends[0]);
        close(ends[1]);
    }
    void put(char c) const { EXPECT_EQ(write(ends[1], &c, 1), 1); }
    char get() const
    {
        char c = 0;
        EXPECT_EQ(read(ends[0], &c, 1), 1);
        return c;
    }

    std::array<int, 2> ends{};
};
}

class PollRunLoopTest : public testing::Test
{
protected:
    // Starts a timer that logs its name and the time of each call.
    RunLoop::TimerId log(char name, int period)
    {
        return loop.startTimer(period,
                               [this, name] { calls += name + std::to_string(clock.milliseconds()) + ' '; });
    }

    VirtualClock clock;
    PollRunLoop loop;
    std::string calls;
};

TEST_F(PollRunLoopTest, CallsEachTimerOncePerPeriodAndMakesNothingUpForMissedOnes)
{
    log('a', 30);
    log('b', 50);
    loop.runFor(100);
    EXPECT_EQ(calls, "a30 b50 a60 a90 b100 ");
    calls.clear();
    clock.advance(115);
    loop.runFor(60);
    EXPECT_EQ(calls, "a215 b215 a245 b265 a275 ") << "one call for several periods, then whole ones";
}

TEST_F(PollRunLoopTest, LetsCallbacksStopTimersAndTheRun)
{
    RunLoop::TimerId own = 0, other = 0;
    int turns = 0;
    own = loop.startTimer(5,
                          [&]
                          {
                              if (++turns == 2)
                              {
                                  loop.stopTimer(other); // which is due at the same time
                                  loop.stopTimer(own);
                                  loop.stopTimer(12345);
                              }
                          });
    other = log('b', 10);
    loop.startTimer(40, [&] { loop.stop(); });
    log('c', 40);
    loop.run();
    EXPECT_EQ(turns, 2);
    EXPECT_EQ(calls, "") << "b was stopped, and c is due behind the stop of the run";
    EXPECT_EQ(clock.milliseconds(), 40);
    loop.runFor(39);
    EXPECT_EQ(calls, "c40 ") << "a stop holds for one run";
}

TEST_F(PollRunLoopTest, ReturnsWhenThereIsNothingToWaitFor)
{
    loop.run();
    EXPECT_FALSE(loop.runOnce(-1));
    loop.stop();
    log('a', 10);
    loop.run();
    EXPECT_EQ(calls, "") << "stopped before it began";
}

TEST_F(PollRunLoopTest, TellsOfDescriptorsAheadOfTime)
{
    Pipe first, second;
    RunLoop::WatchId secondWatch = 0;
    loop.watch(first.ends[0],
               [&]
               {
                   calls += first.get();
                   loop.unwatch(secondWatch); // is ready, too
               });
    secondWatch = loop.watch(second.ends[0], [&] { calls += second.get(); });
    EXPECT_EQ(loop.watch(-1, [] {}), 0u);

    EXPECT_FALSE(loop.runOnce(7));
    EXPECT_EQ(clock.milliseconds(), 7);
    first.put('x');
    second.put('y');
    EXPECT_TRUE(loop.runOnce(1000));
    EXPECT_EQ(clock.milliseconds(), 7);
    EXPECT_EQ(calls, "x");
    EXPECT_FALSE(loop.runOnce(0));
    EXPECT_EQ(calls, "x");
}

TEST_F(PollRunLoopTest, GivesUpAClosedDescriptor)
{
    const int closed = dup(0);
    loop.watch(closed, [&] { calls += '!'; });
    close(closed);
    loop.run();
    EXPECT_EQ(calls, "");
}

TEST_F(PollRunLoopTest, KeepsTimersOnTheLoopOnWhichTheyWereStarted)
{
    RepeatingTimer first, second, late;
    first.start(10, [this] { calls += '1'; });
    EXPECT_FALSE(first.isRunning());
    EXPECT_EQ(RunLoop::current(), nullptr);
    RunLoop::enter(loop); // takes what was waiting
    {
        PollRunLoop other;
        RunLoop::enter(other);
        second.start(10,
                     [&]
                     {
                         calls += '2';
                         RunLoop::enter(loop);
                         if (late.isStarted())
                             return;
                         EXPECT_EQ(RunLoop::current(), &other) << "it is still its turn";
                         late.start(10, [this] { calls += '3'; });
                     });
        other.runFor(15);
        EXPECT_EQ(calls, "2");
        EXPECT_EQ(RunLoop::current(), &loop);
        loop.runFor(10);
        EXPECT_EQ(calls, "211") << "neither of the other loop's";
        other.runFor(5);
        EXPECT_EQ(calls, "2112323") << "the timer that was started in that loop's turn is its own";
        {
            const RunLoop::Turn turn(other);
            RunLoop::leave(other);
            EXPECT_EQ(RunLoop::current(), &loop) << "a loop that was left has no turn";
        }
    }
    calls.clear();
    loop.runFor(10);
    EXPECT_EQ(calls, "1123") << "all of them are on the loop that is left";
    first.stop();
    late.stop();
    calls.clear();
    second.start(5,
                 [&]
                 {
                     second.start(20, [this] { calls += 'n'; }); // while it runs itself
                     calls += 'o';
                 });
    loop.runFor(25);
    EXPECT_EQ(calls, "on");
    second.stop();
    loop.runFor(100);
    EXPECT_EQ(calls, "on");
}

// A loop that is destroyed while it is entered stops its timers, and is not called any more.
TEST_F(PollRunLoopTest, ForgetsALoopThatHasGone)
{
    struct Careless : RunLoop
    {
        TimerId startTimer(int, Callback) override { return 7; }
        void stopTimer(TimerId) override { ADD_FAILURE(); }
        WatchId watch(int, Callback) override { return 0; }
        void unwatch(WatchId) override {}
    };
    RepeatingTimer timer;
    {
        Careless careless;
        RunLoop::enter(careless);
        timer.start(10, [] {});
        EXPECT_TRUE(timer.isRunning());
    }
    EXPECT_EQ(RunLoop::current(), nullptr);
    EXPECT_FALSE(timer.isRunning());
    EXPECT_TRUE(timer.isStarted());
}

// Like a timer, a watch stays on its loop and survives it.
TEST_F(PollRunLoopTest, KeepsWatchesOnTheLoopOnWhichTheyWereStarted)
{
    Pipe ready;
    ready.put('x');
    DescriptorWatch watch;
    int count = 0;
    const auto callsOf = [&count](PollRunLoop& run)
    {
        count = 0;
        run.runOnce(0);
        return count;
    };
    watch.start(ready.ends[0], [&] { ++count; }); // before there is a loop
    EXPECT_EQ(callsOf(loop), 0);
    RunLoop::enter(loop);
    EXPECT_EQ(callsOf(loop), 1);
    {
        PollRunLoop inner;
        RunLoop::enter(inner);
        EXPECT_EQ(callsOf(inner), 0);
        EXPECT_EQ(callsOf(loop), 1);
        watch.start(ready.ends[0], [&] { ++count; });
        EXPECT_EQ(callsOf(inner), 1);
        EXPECT_EQ(callsOf(loop), 0);
    }
    EXPECT_EQ(callsOf(loop), 1);
    watch.start(ready.ends[0], [&] { watch.stop(), ++count; });
    EXPECT_EQ(callsOf(loop), 1);
    EXPECT_EQ(callsOf(loop), 0);
}
