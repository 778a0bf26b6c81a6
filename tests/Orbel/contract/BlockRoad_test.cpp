// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/BlockRoad.h"
#include "Orbel/contract/BypassParameter.h"
#include "Orbel/contract/ChannelWiring.h"
#include "support/RecordingEffect.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

using namespace Orbel;
using testing::ElementsAre;

namespace
{
// The effect that an adapter would have made, with what it is asked for as tempo and frames.
struct Effect : RecordingEffect
{
    Effect() : RecordingEffect(nullptr) {}
    long getDesiredProcessBlockSize() override
    {
        asked = {getBlockTempo(), float(getBlockFrames())};
        return desired;
    }
    float value() const { return properties[1]->getCurrentValue(); }

    std::vector<float> asked;
    long desired = -1;
};

// A block of ones over the road, which the effect doubles; the lengths of its pieces.
std::vector<int> lengths(Effect& effect, int frames, BlockRules rules, BlockObserver* observer = nullptr,
                         double rate = 48000.0)
{
    std::vector<float> in(size_t(frames) + 1, 1.0f), out(in), right(in);
    out.back() = 2.0f; // beyond the block
    float *inputs[] = {in.data(), in.data()}, *outputs[] = {out.data(), right.data()};
    AudioBusInformation block(inputs, 1, outputs, 1, frames);
    block.timeInfo.tempo = 120.0f;
    effect.pieces.clear();
    BlockRoad(effect, rules, observer).process(block, rate);
    EXPECT_EQ(out, std::vector<float>(size_t(frames) + 1, 2.0f)) << "the buses move on with the pieces";
    std::vector<int> result;
    for (const auto& piece : effect.pieces)
        result.push_back(piece.frames);
    return result;
}

constexpr BlockRules wholeBelowTwice = {BlockRules::wholeBelowTwiceDesired, BlockRules::cutTheBlock,
                                        BlockRules::product};
constexpr BlockRules atMost = {BlockRules::atMostDesired, BlockRules::cutTheBlock, BlockRules::quotient};
}

TEST(BlockRoad, CutsABlockByTheDesiredSize)
{
    using Lengths = std::vector<int>;
    const struct
    {
        int frames;
        long desired;
        Lengths whole, most;
    } cases[] = {
        {399, 200, {399}, {200, 199}},
        {400, 200, {200, 200}, {200, 200}},
        {450, 200, {200, 200, 50}, {200, 200, 50}},
        {100, 200, {100}, {100}},
        {100, -1, {100}, {100}},
        {100, 0, {100}, {100}},
        {3, 1, {1, 1, 1}, {1, 1, 1}},
        {0, 200, {}, {}},
    };
    for (const auto& each : cases)
    {
        SCOPED_TRACE(testing::Message() << each.frames << " frames, " << each.desired << " desired");
        Effect effect;
        effect.desired = each.desired;
        EXPECT_EQ(lengths(effect, each.frames, wholeBelowTwice), each.whole);
        EXPECT_EQ(lengths(effect, each.frames, atMost), each.most);
        EXPECT_THAT(effect.asked, ElementsAre(120.0f, float(each.frames))) << "asked once the block is known";
    }
}

TEST(BlockRoad, MovesTheTimeOnByEachPiece)
{
    Effect effect;
    effect.desired = 49;
    constexpr double rate = 98.0; // 49 samples a beat, of which the two steps make a different beat
    lengths(effect, 147, atMost, nullptr, rate);
    ASSERT_EQ(effect.pieces.size(), 3u);
    EXPECT_EQ(effect.pieces[2].samplePosition, 98.0);
    EXPECT_EQ(effect.time.samplesToNextBeat, -98);
    EXPECT_EQ(effect.pieces[2].ppq, 2.0);
    lengths(effect, 147, wholeBelowTwice, nullptr, rate);
    EXPECT_EQ(effect.pieces[1].ppq, std::nextafter(1.0, 0.0));
}

TEST(BlockRoad, HasThreeWaysWithTimedValues)
{
    struct Log final : BlockObserver
    {
        void timedValuesBegin() override { text += "("; }
        void timedValuesEnd() override { text += ")"; }
        void pieceProcessed(int frames) override { text += std::to_string(frames); }
        std::string text;
    };
    using Lengths = std::vector<int>;
    const struct
    {
        BlockRules::ValueTiming way;
        AutomationSyncResolution grid;
        Lengths pieces;
        float value;
        const char* log;
    } cases[] = {
        {BlockRules::cutTheBlock, automationSyncOff, {30, 1, 69}, 5.0f, "()30()1()69"},
        {BlockRules::cutOnAGrid, automationSyncOff, {100}, 0.0f, "100"},
        {BlockRules::cutOnAGrid, automationSync8th, {1, 99}, 5.0f, "()1()99"}, // nothing plays: at once
        {BlockRules::notUsed, automationSync8th, {100}, 0.0f, "100"},
    };
    for (const auto& each : cases)
    {
        SCOPED_TRACE(each.log);
        Effect effect;
        Log log;
        gAutomationSync = each.grid;
        effect.addSyncParameterSetEvent(effect.getParameterProperty(1), 0.75f, 30);
        const BlockRules rules = {BlockRules::atMostDesired, each.way, BlockRules::product};
        EXPECT_EQ(lengths(effect, 100, rules, &log), each.pieces);
        EXPECT_EQ(effect.value(), each.value);
        EXPECT_EQ(log.text, each.log);
        EXPECT_THAT(lengths(effect, 100, atMost), ElementsAre(100)) << "the end of a block leaves nothing";
    }
    gAutomationSync = automationSyncOff;
}

TEST(BlockRoad, WritesEverythingAtOnceWithoutAudio)
{
    Effect effect;
    {
        BlockRoad road(effect, atMost);
        effect.addSyncParameterSetEvent(effect.getParameterProperty(1), 0.75f, 4000);
        road.flush();
    }
    EXPECT_EQ(effect.value(), 5.0f);
    EXPECT_TRUE(effect.pieces.empty());
    EXPECT_THAT(lengths(effect, 64, atMost), ElementsAre(64));
}

#ifndef NDEBUG
TEST(BlockRoad, ReportsCallsOnTheWrongThread)
{
    static std::string reports;
    reports.clear();
    Core::setThreadFaultHandler([](const char* seam, const char*) { reports += std::string(seam) + ";"; });
    Effect effect;
    {
        const BlockRoad road(effect, atMost);
        std::thread([&] { BlockRoad(effect, atMost).flush(); }).join();
        effect.getParameterProperty(0)->AddListener(&effect, false);
        effect.getEditor();
    }
    effect.getParameterProperty(0)->ForgetListener(&effect);
    Core::setThreadFaultHandler(nullptr);
    EXPECT_EQ(reports, "BlockRoad;OrbelOS::prepareSyncParameterSet;OrbelOS::syncSetParameters;"
                       "ParameterProperty::AddListener;OrbelOS::getEditor;");
}
#endif

TEST(ChannelWiring, StandsInForChannelsThatTheHostLacks)
{
    float left[2] = {1, 2}, right[2] = {3, 4}, spare[2] = {9, 9};
    const struct
    {
        HostBus bus;
        float left, right; // the last sample of each side
    } cases[] = {{{left, right}, 2, 4},
                 {{left, nullptr, true}, 2, 2},
                 {{left, nullptr}, 2, 0},
                 {{nullptr, right}, 0, 4},
                 {{}, 0, 0}};
    for (const auto& each : cases)
    {
        ChannelWiring wiring(spare, 2);
        wiring.wireInput(ChannelWiring::maximumBuses, each.bus); // one too many
        wiring.wireInput(1, {});
        wiring.wireInput(0, each.bus); // last, so that the spare channel is its own
        wiring.wireOutput(0, each.bus);
        EXPECT_EQ(wiring.inputs()[0][1], each.left);
        EXPECT_EQ(wiring.inputs()[1][1], each.right);
        EXPECT_EQ(wiring.outputs()[1], each.bus.right ? right : spare);
    }
}

TEST(BypassParameter, IsTheFirstWithItsIdInAnyCase)
{
    RecordingEffect::plan.ids = {"kByPass2", "ABYPASS"};
    Effect none;
    RecordingEffect::plan.ids = {"A", "kByPaSs", "BYPASS"};
    Effect effect;
    RecordingEffect::plan = {};
    EXPECT_EQ(findBypassParameter(effect), effect.getParameterProperty(1));
    EXPECT_TRUE(isBypass(*effect.getParameterProperty(2)));
    EXPECT_EQ(findBypassParameter(none), nullptr);
}
