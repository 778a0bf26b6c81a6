// Timed parameter values that hosts add on other threads than the one that renders.
#include "Orbel/contract/BlockRoad.h"
#include "Orbel/contract/OrbelOS.h"
#include "Orbel/parameters/ParameterProperty.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

using namespace Orbel;
using testing::ElementsAre;

namespace
{
constexpr int parameters = 4;

// Keeps every value that is written to it, with the parameter's id.
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
    void render(int frames = 64)
    {
        CHostTimeInfo time;
        prepareSyncParameterSet(time, frames);
        for (int left = frames; left > 0; left -= pieces.back())
        {
            pieces.push_back(left);
            syncSetParameters(pieces.back());
        }
        clearSyncSetEvents();
    }
    using Written = std::vector<std::pair<long, float>>;
    Written takeWritten() { return std::exchange(written, {}); }

    ParameterProperty properties[parameters];
    Written written;
    float position = -1.0f; // that was given last
    std::vector<int> pieces;
};

template <typename Work>
void elsewhere(Work work)
{
    std::thread(work).join();
}
}

TEST(TimedValues, OfAnotherThreadWaitForTheNextBlock)
{
    Effect effect;
    effect.render(); // this thread is the audio thread now
    effect.pieces.clear();
    CHostTimeInfo time;
    effect.prepareSyncParameterSet(time, 64);
    elsewhere([&] { effect.add(0, 0.5f, 40); });
    int frames = 64;
    effect.syncSetParameters(frames);
    EXPECT_EQ(frames, 64) << "not in the block that runs";
    effect.clearSyncSetEvents();
    effect.render();
    EXPECT_THAT(effect.takeWritten(), ElementsAre(std::pair(0L, 0.5f)));
    EXPECT_THAT(effect.pieces, ElementsAre(40, 1, 23)) << "the end of a block has left it alone";
    for (const int offset : {1 << 30, -(1 << 30)}) // beyond the block, and overdue
    {
        elsewhere([&] { effect.add(1, 0.25f, offset); });
        effect.pieces.clear();
        effect.render();
        EXPECT_EQ(effect.pieces.front(), offset > 0 ? 63 : 64);
    }
}

TEST(TimedValues, GiveWayToANewerOneOfTheSameParameter)
{
    using Written = Effect::Written;
    Effect effect;
    effect.render();
    const auto other = [&](int id, float value) { elsewhere([&, id, value] { effect.add(id, value); }); };
    const auto landed = [&]
    {
        effect.render();
        return effect.takeWritten();
    };
    other(2, 0.125f);
    other(1, 0.1875f);
    other(2, 0.3125f);
    other(1, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(landed(), Written({{1, 0.1875f}, {2, 0.3125f}})) << "the last to arrive is written first";
    other(0, 0.4375f);
    effect.add(0, 0.5f); // the audio thread's own
    other(1, 0.625f);
    EXPECT_EQ(landed(), Written({{1, 0.625f}, {0, 0.5f}}));
    effect.add(0, 0.6875f);
    other(0, 0.8125f);
    EXPECT_EQ(landed(), Written({{0, 0.8125f}}));
    EXPECT_EQ(effect.position, 0.8125f);
    other(3, 0.875f);
    effect.add(3, 0.90625f);
    other(3, 0.9375f); // through a slot that was emptied, but still hangs on the chain
    EXPECT_EQ(landed(), Written({{3, 0.9375f}}));
    EXPECT_EQ(landed(), Written());
}

TEST(TimedValues, AClearTakesWhatIsThereAndNothingOfTheAudioThread)
{
    using Written = Effect::Written;
    Effect effect;
    effect.add(0, 0.125f);
    effect.clearSyncSetEvents(); // on one thread, before any block
    effect.render();
    EXPECT_EQ(effect.takeWritten(), Written());
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
        effect.render();
        ASSERT_EQ(effect.takeWritten(), Written({{2, 0.4375f}, {0, 0.1875f}})) << i;
    }
}

TEST(TimedValues, OnOneThreadAreAsTheyAlwaysWere)
{
    Effect effect;
    effect.add(0, 0.25f, 10);
    effect.add(0, 0.5f, 20);
    int frames = 64;
    effect.syncSetParameters(frames); // also in a block that nobody has prepared
    EXPECT_EQ(frames, 20);
    effect.syncSetParameters(frames);
    EXPECT_THAT(effect.takeWritten(), ElementsAre(std::pair(0L, 0.5f))) << "the last value";
    EXPECT_EQ(effect.position, 0.25f) << "and the first position, as ever";
}

// What a listener adds while a value is written: for the same parameter it is dropped, so that nothing
// echoes.
TEST(TimedValues, MayBeAddedByAWrite)
{
    struct Echo : ParameterChangeListener
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
    Echo echo(effect);
    effect.properties[0].AddListener(&echo, false);
    effect.add(0, 0.5f);
    effect.render();
    EXPECT_THAT(effect.takeWritten(), ElementsAre(std::pair(0L, 0.5f), std::pair(1L, 0.75f)));
}

namespace
{
constexpr int steps = 1 << 16; // a power of two: no value is rounded
constexpr int shared = 3;      // a parameter that all write

// A value that tells its writer and its step.
float value(int writer, int step)
{
    return float(writer * steps + step) / float(parameters * steps);
}

// What each writer writes: its own parameter and the shared one.
void writeAll(Effect& effect, int writer)
{
    for (int step = 1; step <= steps; ++step)
    {
        effect.add(writer, value(writer, step), step % 64);
        effect.add(shared, value(writer, step));
    }
}

// Of each writer the steps that came through: never an older one after a newer one, and the last of all.
void expectInOrder(const Effect::Written& written, int writer, bool last)
{
    float before = 0.0f;
    for (const auto& [id, now] : written)
        if (id == writer)
        {
            ASSERT_GE(now, before);
            before = now;
        }
    EXPECT_TRUE(!last || before == value(writer, steps)) << before;
}
}

TEST(TimedValuesThreads, NothingIsLostButWhatANewerValueReplaces)
{
    Effect effect;
    std::atomic<int> running = 3;
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 3; ++writer)
        writers.emplace_back(
            [&, writer]
            {
                writeAll(effect, writer);
                --running;
            });
    while (running > 0)
        effect.render();
    for (std::thread& each : writers)
        each.join();
    effect.render();
    for (int writer = 0; writer < 3; ++writer)
        expectInOrder(effect.written, writer, true);
    const float end = effect.properties[shared].getCurrentValue();
    EXPECT_TRUE(end == value(0, steps) || end == value(1, steps) || end == value(2, steps)) << end;
}

TEST(TimedValuesThreads, ClearsFromOtherThreadsSpareTheAudioThreadsValues)
{
    Effect effect;
    effect.render();
    std::atomic<bool> done = false;
    std::thread writer(
        [&]
        {
            writeAll(effect, 1);
            done = true;
        });
    std::thread clearing(
        [&]
        {
            while (!done)
                effect.clearSyncSetEvents();
        });
    for (int block = 1; !done; ++block)
    {
        effect.add(0, float(block % 1024) / 1024.0f);
        effect.render();
        ASSERT_EQ(effect.properties[0].getCurrentValue(), float(block % 1024) / 1024.0f);
    }
    writer.join();
    clearing.join();
    expectInOrder(effect.written, 1, false);
    effect.render();
    effect.takeWritten();
    elsewhere([&] { effect.add(1, 0.5f), effect.clearSyncSetEvents(); });
    effect.render();
    EXPECT_EQ(effect.takeWritten(), Effect::Written());
}

// Two threads take turns as the audio thread; the one whose turn it is not adds values, as before.
TEST(TimedValuesThreads, TheAudioThreadMayChangeWhileTheFormerOneAddsValues)
{
    Effect effect;
    std::atomic<int> turn = 0, running = 2;
    const auto work = [&](int self)
    {
        for (int step = 1; step <= steps; ++step)
        {
            effect.add(self, value(self, step));
            if (turn % 2 == self)
            {
                effect.render();
                ++turn;
            }
        }
        --running;
        while (running > 0)
            if (turn % 2 == self)
            {
                effect.render();
                ++turn;
            }
    };
    std::thread other(work, 1);
    work(0);
    other.join();
    effect.render();
    for (const int self : {0, 1})
        expectInOrder(effect.written, self, true);
}
