// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/Threads.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

using namespace Core::Threads;

// The function has to outlive the thread.
static ThreadHandle start(const std::function<void()>& function)
{
    const auto call = [](void* argument) -> void*
    {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    return createThread(call, const_cast<std::function<void()>*>(&function), 0);
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
    bool got = false;
    const std::function<void()> tryIt = [&]
    {
        section.leave(); // not inside: changes nothing
        got = section.tryEnter();
        section.leave();
    };
    section.enter();
    EXPECT_TRUE(section.tryEnter());
    for (const bool isFree : {false, false, true})
    {
        waitForThreadDone(start(tryIt));
        EXPECT_EQ(got, isFree);
        section.leave();
    }
}
