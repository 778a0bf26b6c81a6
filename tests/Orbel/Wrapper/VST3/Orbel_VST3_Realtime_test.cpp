// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/Wrapper/VST3/VST3Driver.h"
#include "support/Realtime.h"

#include <gtest/gtest.h>

using namespace vst3_host;

TEST(Orbel_VST3Realtime, AlreadyTheFirstBlockWithEventsNeitherAllocatesNorLocks)
{
    RecordingEffect::plan = {};
    RecordingEffect::plan.type = Orbel::OrbelFX_Description::instrument;
    VST3Driver host;
    ASSERT_TRUE(host.make());
    ASSERT_TRUE(host.setUp(48000.0, 64));
    Event note{};
    note.type = Event::kNoteOnEvent;
    host.events.list.assign(2000, note);
    host.changes.queues = {{0, {{7, 0.5}}}, {2, {{9, 0.25}}}};
    RecordingEffect::latest->midi.reserve(4000);
    RecordingEffect::latest->pieces.reserve(100);
    std::vector<float> left(64), right(64);
    AudioBusBuffers buses[2];
    float* channels[] = {left.data(), right.data()};
    ProcessData data;
    data.numSamples = 64;
    data.numInputs = data.numOutputs = 1;
    data.inputs = &buses[0];
    data.outputs = &buses[1];
    buses[0].numChannels = buses[1].numChannels = 2;
    buses[0].channelBuffers32 = buses[1].channelBuffers32 = channels;
    data.inputParameterChanges = &host.changes;
    data.inputEvents = &host.events;
    const RealtimeWindow window;
    EXPECT_EQ(host.adapter->process(data), kResultOk);
    EXPECT_EQ(window.allocations(), 0);
    EXPECT_EQ(window.locks(), 0);
    EXPECT_EQ(RecordingEffect::latest->midi.size(), 2000u);
}
