#include "CORE/Threads.h"
#include "CORE/Time.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <vector>

using namespace Core::Threads;

// The function has to outlive the thread.
static ThreadHandle start(const std::function<void()>& function, int priority = 0)
{
    const auto call = [](void* argument) -> void*
    {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    return createThread(call, const_cast<std::function<void()>*>(&function), priority);
}

static void runElsewhere(const std::function<void()>& function)
{
    waitForThreadDone(start(function));
}

TEST(Threads, CanBeWaitedForOnceOrOftenOrNever)
{
    int done = 0; // not atomic: a wait makes what the thread wrote visible
    const std::function<void()> work = [&] { ++done; };
    const auto handle = start(work);
    const std::function<void()> alsoWait = [&] { waitForThreadDone(handle); };
    const auto second = start(alsoWait), third = start(alsoWait);
    waitForThreadDone(handle);
    EXPECT_EQ(done, 1);
    waitForThreadDone(handle);
    killThread(handle); // long over
    releaseThreadHandle(handle);
    waitForThreadDone(second);
    waitForThreadDone(third);

    static std::atomic<int> unwaited; // those threads may outlast this test
    static const std::function<void()> count = [] { ++unwaited; };
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(start(count));

    waitForThreadDone(nullptr);
    killThread(nullptr);
    EXPECT_FALSE(createThread(nullptr, nullptr, 0));
}

TEST(Threads, AKilledThreadUnwindsItsScopesAndCanBeWaitedFor)
{
    struct Scope
    {
        std::atomic<bool>& left;
        ~Scope() { left = true; }
    };
    for (int i = 0; i < 20; ++i)
    {
        std::atomic<bool> left{false};
        const std::function<void()> forever = [&]
        {
            const Scope scope{left};
            for (;;)
                threadSleep(1000000);
        };
        const auto handle = start(forever);
        if (i % 2)
            killThread(handle);
        killThread(handle);
        waitForThreadDone(handle);
        EXPECT_TRUE(left);
    }
}

TEST(Threads, DoNotWaitForThemselves)
{
    ThreadHandle own;
    CriticalSection ready;
    ready.enter();
    const std::function<void()> waitForSelf = [&]
    {
        const SectionGuard guard(ready);
        waitForThreadDone(own);
    };
    own = start(waitForSelf);
    ready.leave();
    waitForThreadDone(own);
}

TEST(Threads, ANegativePriorityGivesWay)
{
    const int here = getpriority(PRIO_PROCESS, 0);
    int there = 0;
    const std::function<void()> look = [&] { there = getpriority(PRIO_PROCESS, 0); };
    for (int priority : {0, -2, -1000})
    {
        waitForThreadDone(start(look, priority));
        EXPECT_EQ(there, std::min(here - priority, 19)) << priority;
    }
    EXPECT_EQ(getpriority(PRIO_PROCESS, 0), here);
}

TEST(CriticalSection, LetsOneThreadInAsDeepAsItWants)
{
    CriticalSection section;
    int sum = 0; // the section's to guard
    const std::function<void()> work = [&]
    {
        for (int i = 0; i < 10000; ++i)
        {
            const SectionGuard guard(section);
            section.enter();
            ++sum;
            section.leave();
            ++sum;
        }
    };
    std::vector<ThreadHandle> threads;
    for (int i = 0; i < 4; ++i)
        threads.push_back(start(work));
    for (const auto& thread : threads)
        waitForThreadDone(thread);
    EXPECT_EQ(sum, 4 * 2 * 10000);
}

TEST(CriticalSection, IsHeldUntilEveryEnterIsTakenBack)
{
    CriticalSection section;
    const auto freeElsewhere = [&]
    {
        bool got = false;
        runElsewhere(
            [&]
            {
                section.leave(); // not inside: changes nothing
                got = section.tryEnter();
                section.leave();
            });
        return got;
    };
    section.leave();
    EXPECT_TRUE(freeElsewhere());
    section.enter();
    EXPECT_TRUE(section.tryEnter());
    EXPECT_FALSE(freeElsewhere());
    section.leave();
    EXPECT_FALSE(freeElsewhere());
    section.leave();
    EXPECT_TRUE(freeElsewhere());
    section.leave();
    EXPECT_TRUE(freeElsewhere());
}

TEST(Time, TicksAreMillisecondsOfTheSteadyClock)
{
    const auto steady = []
    {
        using namespace std::chrono;
        return uint64_t(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
    };
    const uint64_t before = steady();
    const uint32_t ticks = Core::Time::getTicks();
    EXPECT_LE(uint32_t(ticks - uint32_t(before)), steady() - before);
}
