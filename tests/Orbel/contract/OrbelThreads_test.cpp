// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/OrbelThreads.h"

#include <climits>
#include <gtest/gtest.h>
#include <vector>

static volatile int counter = 0;

TEST(OrbelThreads, CountersAnswerTheValueFromBeforeAndLoseNoStep)
{
    counter = 5;
    EXPECT_EQ(Orbel::AtomicIncrement(counter), 5);
    EXPECT_EQ(Orbel::AtomicDecrement(counter), 6);
    counter = INT_MAX;
    EXPECT_EQ(Orbel::AtomicIncrement(counter), INT_MAX);
    EXPECT_EQ(counter, INT_MIN);

    counter = 0;
    const auto work = [](void*) -> void*
    {
        for (int i = 0; i < 10000; ++i)
        {
            Orbel::AtomicIncrement(counter);
            Orbel::AtomicIncrement(counter);
            Orbel::AtomicDecrement(counter);
        }
        return nullptr;
    };
    std::vector<Orbel::OrbelThreadHandle> threads;
    for (int i = 0; i < 4; ++i)
        threads.push_back(Orbel::createOrbelThread(work, nullptr, -1));
    for (const auto& thread : threads)
        Core::Threads::waitForThreadDone(thread);
    EXPECT_EQ(counter, 4 * 10000);
}

static volatile unsigned turns = 0;

// Without instrumentation or anything on the stack: the sanitizers do not expect to be left at any
// instruction.
__attribute__((no_sanitize("thread"))) static void* spin(void*)
{
    Orbel::OrbelThreadAllowCancel();
    for (;;)
        turns = turns + 1;
}

TEST(OrbelThreads, AThreadThatAllowsItIsKilledWithoutACancellationPoint)
{
    const auto thread = Orbel::createOrbelThread(spin, nullptr, 0);
    ASSERT_TRUE(thread);
    Orbel::killOrbelThread(thread);
    Core::Threads::waitForThreadDone(thread);
}
