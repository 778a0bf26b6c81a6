#include "Orbel/CPropertyManager.h"
#include "Orbel/OrbelOS.h"
#include "Orbel/OrbelPluginList.h"
#include "Orbel/ParameterProperty.h"
#include "Orbel/TransportHelpers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

using namespace Orbel;

// A host that writes down what it is asked.
struct Host : OrbelCallback
{
    std::map<std::string, float> told;
    int type = 3;

    bool CB_setNumStereoInputs(int channels) override { return note("inputs", float(channels)); }
    bool CB_setNumStereoOutputs(int channels) override { return note("outputs", float(channels)); }
    bool CB_setOutputLatency(int samples) override { return note("latency", float(samples)); }
    bool CB_beginEdit(int index) override { return note("begin", float(index)); }
    bool CB_endEdit(int index) override { return note("end", float(index)); }
    void CB_performEdit(int, float value) override { note("perform", value); }
    float CB_getHostTempo() override { return 99.0f; }
    int CB_getHostedPluginType() const override { return type; }

    bool note(const char* what, float value)
    {
        told[what] = value;
        return true;
    }
};

// Three parameters, of which the first is not automatable; and every MIDI event that arrives.
struct Effect : OrbelOS
{
    CPropertyManager manager;
    std::vector<OrbelMidiEvent> heard;
    int resumed = 0, suspended = 0;

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
    void resume() override { ++resumed; }
    void suspend() override { ++suspended; }

    using OrbelOS::getParameterProperty;
};

TEST(OrbelOS, DoesWithoutAHost)
{
    OrbelOS effect(nullptr);
    char text[256] = "x";
    EXPECT_FALSE(effect.getProgramName(text));
    EXPECT_STREQ(text, "");
    EXPECT_EQ(effect.getCurrentHostTempo(), 10.0f);
    EXPECT_STREQ(effect.getHostedPluginType(), "NO_CALLBACK");
    EXPECT_EQ(effect.getDesiredProcessBlockSize(), -1);
    EXPECT_EQ(effect.getSampleRate(), 44100.0f);
    effect.setNumInputBuses(2);
    effect.beginEdit(1);
    effect.performEdit(1, 0.5f);
    effect.setBypass(true);
    EXPECT_TRUE(effect.getBypass());
    EXPECT_EQ(effect.getNumInputBuses(), 2);
}

TEST(OrbelOS, PassesRequestsOnToItsHost)
{
    Host host;
    Effect effect(&host);
    effect.setNumInputBuses(1);
    effect.setNumOutputBuses(3);
    effect.setOutputLatency(64);
    EXPECT_EQ(host.told["inputs"], 2);
    EXPECT_EQ(host.told["outputs"], 6);
    EXPECT_EQ(host.told["latency"], 64);
    EXPECT_EQ(effect.getOutputLatency(), 64);
    EXPECT_EQ(effect.getCurrentHostTempo(), 99.0f);

    effect["C"].setValue(5.0f);
    effect.beginEdit(&effect["C"]);
    effect.performEdit(&effect["C"]);
    EXPECT_EQ(host.told["begin"], 1);
    EXPECT_EQ(host.told["perform"], effect["C"].getCurrentValue_normalized());
    host.told.clear();
    effect.endEdit(&effect["A"]); // not automatable
    effect.endEdit(static_cast<ParameterProperty*>(nullptr));
    EXPECT_TRUE(host.told.empty());

    const char* types[] = {"-", "VST2", "VST3", "RTAS", "AU", "AAX", "Orbel", "", ""};
    for (host.type = 0; host.type < 8; ++host.type)
        EXPECT_STREQ(effect.getHostedPluginType(), types[host.type]);
    host.type = -1;
    EXPECT_STREQ(effect.getHostedPluginType(), "");
}

TEST(OrbelOS, KnowsAutomationIndicesAndSuspendsOnBypassAndReset)
{
    Effect effect;
    EXPECT_EQ(effect.getAutomationIndex(&effect["A"]), -1);
    EXPECT_EQ(effect.getAutomationIndex(&effect["B"]), 0);
    EXPECT_EQ(effect.getAutomationIndex(&effect["C"]), 1);
    EXPECT_EQ(effect.getAutomationIndex(nullptr), -1);
    effect.setBypass(true);
    EXPECT_EQ(effect.suspended, 1);
    effect.setBypass(false);
    effect.reset();
    EXPECT_EQ(effect.suspended, 2);
    EXPECT_EQ(effect.resumed, 2);
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
        {midi(0xE0, 0, 0), 224, 0, -1.0f},          {midi(0xF8, 0, 0), 0, 0, 0.0f},
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
        if (each.type == 128 && each.event.raw[0] >= 0x90)
        {
            EXPECT_EQ(event.raw[0], 128);
        }
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

    effect.addSyncParameterSetEvent(&effect["B"], 0.125f, 0); // due at once: a piece of one sample
    EXPECT_EQ(pieces(effect, 256), (Pieces{{1, 1.25f}, {255, 1.25f}}));

    effect.addSyncParameterSetEvent(&effect["B"], 0.9f, 10); // the later one of a parameter stays
    effect.addSyncParameterSetEvent(&effect["B"], 0.25f, 20);
    effect.addSyncParameterSetEvent(nullptr, 0.2f, 5);
    EXPECT_EQ(pieces(effect, 64), (Pieces{{20, 1.25f}, {1, 2.5f}, {43, 2.5f}}));

    effect.addSyncParameterSetEvent(&effect["B"], 0.375f, 500); // beyond the block: its last sample
    EXPECT_EQ(pieces(effect, 256), (Pieces{{255, 2.5f}, {1, 3.75f}}));

    effect.addSyncParameterSetEvent(&effect["B"], NAN, 0);
    effect.addSyncParameterSetEvent(&effect["C"], 0.5f, 0); // through the curve: 10 (1 - 2 x 0.5 / 1.5)
    EXPECT_EQ(pieces(effect, 8), (Pieces{{1, 3.75f}, {7, 3.75f}}));
    EXPECT_FLOAT_EQ(effect["C"].getCurrentValue(), 10.0f / 3.0f);

    effect.addSyncParameterSetEvent(&effect["B"], 0.8f, 0);
    effect.clearSyncSetEvents(); // what still waits is dropped
    EXPECT_EQ(pieces(effect, 8), (Pieces{{8, 3.75f}}));
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

TEST(TransportHelpers, MeasureTheWayToTheNextBeat)
{
    using namespace Helpers;
    EXPECT_EQ(getSamplesToNextBeat(120, 0.25, 44100), 22050 - 5512);
    EXPECT_EQ(getSamplesToNextBeat(120, 3.0, 44100), 22050);
    EXPECT_EQ(getSamplesToNextBeat(5, 0.5, 44100), getSamplesToNextBeat(10, 0.5, 44100));
    EXPECT_EQ(getSamplesToNextBeat(120, 0.5, 0), 0);
    EXPECT_EQ(getSamplesToNexBeat(44100, 120, 44100, sixteenthNote), 0);
    EXPECT_EQ(getSamplesToNexBeat(44100 + 5512, 120, 44100, sixteenthNote), 0); // half a sample before
    EXPECT_EQ(getSamplesToNexBeat(44100 + 5000, 120, 44100, sixteenthNote), 512);
    EXPECT_EQ(getSamplesToNexBeat(100, 120, 44100, wholeNote), 88100);
}

TEST(OrbelPluginList, OwnsDeepCopies)
{
    OrbelPluginList list, copy;
    for (int i = 0; i < 7; ++i)
    {
        OrbelFX_Description description = {};
        description.id[0] = char('A' + i);
        description.version = i;
        list.push_back(description);
    }
    const OrbelFX_Description& first = list[0];
    copy = list;
    list[6].version = 60;
    EXPECT_EQ(copy[6].version, 6);
    EXPECT_EQ(copy.getCount(), 7);
    EXPECT_EQ(first.idAsWord(), 0x41ul);
}
