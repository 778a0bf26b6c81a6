// SPDX-License-Identifier: GPL-3.0-or-later
// Timed parameter values that hosts add on other threads than the one that renders.
#include "Orbel/contract/OrbelOS.h"
#include "Orbel/parameters/ParameterProperty.h"

#include <atomic>
#include <gtest/gtest.h>
#include <limits>
#include <thread>
#include <utility>
#include <vector>

using namespace Orbel;

namespace
{
constexpr int parameters = 4;
using Written = std::vector<std::pair<long, float>>; // parameter and value

// Keeps every value that is written to it.
struct Effect : OrbelOS
{
    Effect() : OrbelOS(nullptr)
    {
        for (int i = 0; i < parameters; ++i)
        {
            ParameterPropertySetup row;
            row.parameterId = i;
            properties[i].setup(&row);
            properties[i].AddListener(this, false);
        }
    }

    void parameterChanged(ParameterProperty* property) override
    {
        written.emplace_back(property->getParameterID(), property->getCurrentValue());
    }
    bool setParameterByAutomation(int, float normalized) override
    {
        position = normalized;
        return false;
    }
    void add(int id, float normalized, int offset = 0)
    {
        addSyncParameterSetEvent(&properties[id], normalized, offset);
    }
    // A block of 64 samples, during which something else may happen; what was written in it.
    template <typename Meanwhile = void (*)()>
    Written render(Meanwhile meanwhile = [] {})
    {
        CHostTimeInfo time;
        written.clear();
        prepareSyncParameterSet(time, 64);
        meanwhile();
        firstPiece = 64;
        syncSetParameters(firstPiece);
        for (int left = 64 - firstPiece, piece = left; left > 0; left -= piece)
            syncSetParameters(piece = left);
        clearSyncSetEvents();
        return written;
    }

    ParameterProperty properties[parameters];
    Written written;
    float position = -1.0f; // that was given last
    int firstPiece = 0;     // length of that of the last block
};

template <typename Work>
void elsewhere(Work work)
{
    std::thread(work).join();
}

void addElsewhere(Effect& effect, int id, float normalized, int offset = 0)
{
    elsewhere([&] { effect.add(id, normalized, offset); });
}
}

TEST(TimedValues, OfAnotherThreadWaitForTheNextBlock)
{
    Effect effect;
    effect.render(); // this thread is the audio thread now
    EXPECT_EQ(effect.render([&] { addElsewhere(effect, 0, 0.5f, 40); }), Written());
    EXPECT_EQ(effect.firstPiece, 64);
    EXPECT_EQ(effect.render(), Written({{0, 0.5f}})) << "the end of that block has left it alone";
    EXPECT_EQ(effect.firstPiece, 40);
    for (const int offset : {1 << 30, -(1 << 30)}) // beyond the block, and overdue
    {
        addElsewhere(effect, 1, 0.25f, offset);
        effect.render();
        EXPECT_EQ(effect.firstPiece, offset > 0 ? 63 : 64);
    }
}

TEST(TimedValues, GiveWayToANewerOneOfTheSameParameter)
{
    Effect effect;
    effect.render();
    addElsewhere(effect, 2, 0.125f);
    addElsewhere(effect, 1, 0.1875f);
    addElsewhere(effect, 2, 0.3125f);
    addElsewhere(effect, 1, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(effect.render(), Written({{1, 0.1875f}, {2, 0.3125f}}))
        << "the last to arrive is written first";
    addElsewhere(effect, 0, 0.4375f);
    effect.add(0, 0.5f); // the audio thread's own
    addElsewhere(effect, 1, 0.625f);
    EXPECT_EQ(effect.render(), Written({{1, 0.625f}, {0, 0.5f}}));
    addElsewhere(effect, 3, 0.875f);
    effect.add(3, 0.6875f);
    addElsewhere(effect, 3, 0.8125f); // through a slot that was emptied, but is still in the chain
    EXPECT_EQ(effect.render(), Written({{3, 0.8125f}}));
    EXPECT_EQ(effect.position, 0.8125f);
    EXPECT_EQ(effect.render(), Written());
}

TEST(TimedValues, AClearTakesWhatIsThereAndNothingOfTheAudioThread)
{
    Effect effect;
    effect.add(0, 0.125f);
    effect.clearSyncSetEvents(); // on one thread, before any block
    EXPECT_EQ(effect.render(), Written());
    for (int i = 0; i < 300; ++i) // more often than the inbox counts
    {
        effect.add(0, 0.1875f);
        elsewhere(
            [&]
            {
                effect.add(1, 0.3125f);
                effect.clearSyncSetEvents();
                effect.add(2, 0.4375f);
            });
        ASSERT_EQ(effect.render(), Written({{2, 0.4375f}, {0, 0.1875f}})) << i;
    }
}

TEST(TimedValues, OnOneThreadAreAsTheyAlwaysWere)
{
    struct Echo : ParameterChangeListener // as a host that sends every value back
    {
        explicit Echo(Effect& written) : effect(written) {}
        void parameterChanged(ParameterProperty*) override
        {
            effect.add(0, 1.0f);
            effect.add(1, 0.75f);
        }
        Effect& effect;
    };
    Effect effect;
    effect.add(0, 0.25f, 10);
    effect.add(0, 0.5f, 20);
    int frames = 64;
    effect.syncSetParameters(frames); // also in a block that nobody has prepared
    EXPECT_EQ(frames, 20);
    effect.syncSetParameters(frames);
    EXPECT_EQ(effect.written, Written({{0, 0.5f}})) << "the last value";
    EXPECT_EQ(effect.position, 0.25f) << "and the first position";

    Echo echo(effect);
    effect.properties[0].AddListener(&echo, false);
    effect.add(0, 0.5f);
    EXPECT_EQ(effect.render(), Written({{0, 0.5f}, {1, 0.75f}})) << "no echo of the parameter itself";
}

namespace
{
constexpr int steps = 1 << 16; // a power of two: no value is rounded

// A value that tells its writer and its step.
float value(int writer, int step)
{
    return float(writer * steps + step) / float(parameters * steps);
}

// Of each writer's own parameter: no older value after a newer one.
bool isInOrder(const Written& written, int writer)
{
    float before = 0.0f;
    for (const auto& [id, now] : written)
        if (id == writer && std::exchange(before, now) > now)
            return false;
    return true;
}
}

TEST(TimedValuesThreads, NothingIsLostButWhatANewerValueReplaces)
{
    constexpr int shared = 3; // a parameter that all write
    Effect effect;
    std::atomic<int> running = 3;
    bool inOrder = true;
    {
        std::vector<std::jthread> writers;
        for (int writer = 0; writer < 3; ++writer)
            writers.emplace_back(
                [&, writer]
                {
                    for (int step = 1; step <= steps; ++step)
                    {
                        effect.add(writer, value(writer, step), step % 64);
                        effect.add(shared, value(writer, step));
                    }
                    --running;
                });
        Written all;
        while (running > 0)
        {
            const Written some = effect.render();
            all.insert(all.end(), some.begin(), some.end());
        }
        for (int writer = 0; writer < 3; ++writer)
            inOrder = inOrder && isInOrder(all, writer);
    }
    effect.render();
    EXPECT_TRUE(inOrder);
    for (int writer = 0; writer < 3; ++writer)
        EXPECT_EQ(effect.properties[writer].getCurrentValue(), value(writer, steps));
    const float end = effect.properties[shared].getCurrentValue();
    EXPECT_TRUE(end == value(0, steps) || end == value(1, steps) || end == value(2, steps)) << end;
}

TEST(TimedValuesThreads, ClearsFromOtherThreadsSpareTheAudioThreadsValues)
{
    Effect effect;
    effect.render();
    std::atomic<bool> done = false;
    int lost = 0;
    {
        const std::jthread clearing(
            [&]
            {
                for (int step = 1; step <= steps; ++step)
                {
                    effect.add(1, value(1, step));
                    effect.clearSyncSetEvents();
                }
                done = true;
            });
        for (int step = 1; !done; ++step)
        {
            effect.add(0, value(0, step % steps));
            effect.render();
            lost += effect.properties[0].getCurrentValue() != value(0, step % steps);
        }
    }
    EXPECT_EQ(lost, 0);
    EXPECT_EQ(effect.render(), Written()) << "the last clear came after the last value";
}

// Two threads take turns as the audio thread; the one whose turn it is not adds values, as before.
TEST(TimedValuesThreads, TheAudioThreadMayChangeWhileTheFormerOneAddsValues)
{
    Effect effect;
    std::atomic<int> turn = 0, running = 2;
    const auto renderInTurn = [&](int self)
    {
        if (turn % 2 != self)
            return;
        effect.render();
        ++turn;
    };
    const auto work = [&](int self)
    {
        for (int step = 1; step <= steps; ++step)
        {
            effect.add(self, value(self, step));
            renderInTurn(self);
        }
        --running;
        while (running > 0)
            renderInTurn(self);
    };
    std::jthread other(work, 1);
    work(0);
    other.join();
    effect.render();
    for (const int self : {0, 1})
        EXPECT_EQ(effect.properties[self].getCurrentValue(), value(self, steps));
}
