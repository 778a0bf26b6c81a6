// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/OrbelOS.h"
#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/parameters/ParameterProperty.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace Orbel;

// What an editor asks its host for.
struct Host : OrbelCallback
{
    std::vector<std::pair<int, float>> told; // -1: begin, -2: end

    bool CB_beginEdit(int index) override { return told.emplace_back(index, -1.0f).first == index; }
    bool CB_endEdit(int index) override { return told.emplace_back(index, -2.0f).first == index; }
    void CB_performEdit(int index, float value) override { told.emplace_back(index, value); }
};

// Three parameters, of which the first is not automatable; and every MIDI event that arrives.
struct Effect : OrbelOS
{
    CPropertyManager manager;
    std::vector<OrbelMidiEvent> heard;
    std::string log;

    explicit Effect(OrbelCallback* host = nullptr) : OrbelOS(host)
    {
        const ParameterPropertySetup rows[] = {
            {"A", "", "", 0, 1, 0, 0, false, 0, ParameterUnitType::PlainNumber, 5},
            {"B", "", "", 0, 10, 0, 0, true, 0, ParameterUnitType::PlainNumber, 6},
            {"C", "", "", 0, 10, 0, 0, true, 1, ParameterUnitType::PlainNumber, 7}};
        for (const auto& row : rows)
            manager.CreateProperty(&row);
    }

    ParameterProperty& operator[](const char* id) { return *manager.getProperty(id); }
    int getParameterCount() override { return manager.getAutomateAblePropertyCount(); }
    ParameterProperty* getParameterProperty(int i) override { return manager.getProperty_automateable(i); }
    void processMidiEvent(OrbelMidiEvent* event) override { heard.push_back(*event); }
    void resume() override { log += "resume "; }
    void suspend() override { log += "suspend "; }

    using OrbelOS::getParameterProperty;
};

TEST(OrbelOS, TellsItsHostOfEditsOfAutomatableParametersAlone)
{
    Host host;
    Effect effect(&host);
    effect["C"].setValue(5.0f);
    effect.beginEdit(&effect["C"]);
    effect.performEdit(&effect["C"]);
    effect.endEdit(&effect["C"]);
    effect.beginEdit(&effect["A"]);
    effect.endEdit(static_cast<ParameterProperty*>(nullptr));
    EXPECT_EQ(host.told, (std::vector<std::pair<int, float>>{
                             {1, -1.0f}, {1, effect["C"].getCurrentValue_normalized()}, {1, -2.0f}}));
}

TEST(OrbelOS, SuspendsForABypassAndAReset)
{
    Effect effect;
    effect.setBypass(true);
    effect.setBypass(false);
    effect.reset();
    EXPECT_EQ(effect.log, "suspend resume suspend resume ");
}

static OrbelMidiEvent midi(uint8_t status, uint8_t first, uint8_t second, int offset = 0)
{
    OrbelMidiEvent event;
    event.sampleOffset = offset;
    event.raw[0] = status;
    event.raw[1] = first;
    event.raw[2] = second;
    return event;
}

TEST(OrbelOS, CompletesMidiEventsFromTheirBytes)
{
    struct Case
    {
        OrbelMidiEvent event;
        int type, number;
        float amount;
    };
    const Case table[] = {
        {midi(0x93, 60, 127), 144, 60, 1.0f},       {midi(0x93, 60, 0), 128, 60, 0.0f},
        {midi(0x80, 61, 64), 128, 61, 64 / 127.0f}, {midi(0xB0, 7, 127), 176, 7, 1.0f},
        {midi(0xB0, 120, 0), 65282, 120, 0.0f},     {midi(0xB0, 123, 0), 65281, 123, 0.0f},
        {midi(0xE0, 0, 64), 224, 0, 0.0f},          {midi(0xE0, 1, 64), 224, 0, 0.0f},
        {midi(0xE0, 2, 64), 224, 0, 2 / 8152.0f},   {midi(0xE0, 127, 127), 224, 0, 8191 / 8152.0f},
        {midi(0xE0, 0, 0), 224, 0, -1.0f},
    };
    for (const Case& each : table)
    {
        SCOPED_TRACE(testing::Message() << int(each.event.raw[0]) << " " << int(each.event.raw[1]));
        Effect effect;
        std::vector<OrbelMidiEvent> events = {each.event};
        effect.processMidiEventList(events);
        const OrbelMidiEvent& event = effect.heard.at(0);
        const bool note = event.eventType == 144 || event.eventType == 128;
        EXPECT_EQ(event.eventType, each.type);
        EXPECT_EQ(note ? event.noteNumber : event.controller, each.number);
        EXPECT_FLOAT_EQ(note ? event.velocity : event.value, each.amount);
        EXPECT_EQ(event.channel, each.event.raw[0] & 15);
    }
}

TEST(OrbelOS, AllNotesOffComesAheadOfWhatHappensAtTheSameInstant)
{
    Effect effect;
    std::vector<OrbelMidiEvent> events = {midi(0x90, 1, 9, 4), midi(0x90, 2, 9, 5), midi(0x90, 3, 9, 5),
                                          midi(0xB0, 123, 0, 5), midi(0x90, 4, 9, 6)};
    effect.processMidiEventList(events);
    std::vector<int> order;
    for (const auto& event : effect.heard)
        order.push_back(event.eventType == OrbelMidiEvent::allNotesOff ? 0 : event.noteNumber);
    EXPECT_EQ(order, (std::vector<int>{1, 0, 2, 3, 4}));
}

// Pieces into which a block falls, as an adapter goes through it, and the value of B in each.
static std::vector<std::pair<int, float>> pieces(Effect& effect, int frames, CHostTimeInfo time = {})
{
    std::vector<std::pair<int, float>> result;
    effect.prepareSyncParameterSet(time, frames);
    while (frames > 0)
    {
        int piece = frames;
        effect.syncSetParameters(piece);
        result.emplace_back(piece, effect["B"].getCurrentValue());
        frames -= piece;
    }
    effect.clearSyncSetEvents();
    return result;
}

TEST(OrbelOS, TimedValuesCutTheBlockAtTheirSample)
{
    using Pieces = std::vector<std::pair<int, float>>;
    Effect effect;
    EXPECT_EQ(pieces(effect, 256), (Pieces{{256, 0.0f}}));

    EXPECT_FALSE(effect.addSyncParameterSetEvent(&effect["B"], 0.5f, 100));
    EXPECT_EQ(pieces(effect, 256), (Pieces{{100, 0.0f}, {1, 5.0f}, {155, 5.0f}}));

    effect.addSyncParameterSetEvent(&effect["B"], 0.9f, 10); // the later one of a parameter stays
    effect.addSyncParameterSetEvent(&effect["B"], 0.25f, 20);
    effect.addSyncParameterSetEvent(nullptr, 0.2f, 5);
    EXPECT_EQ(pieces(effect, 64), (Pieces{{20, 5.0f}, {1, 2.5f}, {43, 2.5f}}));

    effect.addSyncParameterSetEvent(&effect["B"], 0.375f, 500); // beyond the block: its last sample
    EXPECT_EQ(pieces(effect, 256), (Pieces{{255, 2.5f}, {1, 3.75f}}));

    effect.addSyncParameterSetEvent(&effect["B"], NAN, 0);
    effect.addSyncParameterSetEvent(&effect["C"], 0.5f, 0); // through the curve: 10 (1 - 2 x 0.5 / 1.5)
    EXPECT_EQ(pieces(effect, 8), (Pieces{{1, 3.75f}, {7, 3.75f}}));
    EXPECT_FLOAT_EQ(effect["C"].getCurrentValue(), 10.0f / 3.0f);
}

TEST(OrbelOS, AGridHoldsTimedValuesBackToItsNextLine)
{
    using Pieces = std::vector<std::pair<int, float>>;
    CHostTimeInfo time;
    time.tempo = 120;
    time.samplePosition = 16384 - 64; // at 32768 Hz a beat ends 64 samples further
    for (auto resolution : {automationSync32nd, automationSync8th})
    {
        Effect effect;
        effect.setSampleRate(32768.0f);
        effect.setAutomationSyncResolution(resolution);
        time.playing = true;
        EXPECT_TRUE(effect.addSyncParameterSetEvent(&effect["B"], 0.5f, 3));
        EXPECT_EQ(pieces(effect, 100, time), (Pieces{{64, 0.0f}, {1, 5.0f}, {35, 5.0f}}));
        effect.addSyncParameterSetEvent(&effect["B"], 0.625f, 3);
        EXPECT_EQ(pieces(effect, 50, time).front().second, 6.25f); // no line in this block
        time.playing = false;
        effect.addSyncParameterSetEvent(&effect["B"], 0.75f, 3);
        EXPECT_EQ(pieces(effect, 100, time).front().second, 7.5f);
    }
    gAutomationSync = automationSyncOff;
}
