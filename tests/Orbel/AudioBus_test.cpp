#include "Orbel/AudioBusInformation.h"
#include "Orbel/CNChannelBuffer.h"

#include <gtest/gtest.h>
#include <vector>

using Orbel::AudioBusInformation;
using Orbel::AudioStereoBus;

struct Channels
{
    std::vector<float> left, right;
    float* pointers[2];

    explicit Channels(size_t frames, float value = 0.0f)
        : left(frames, value), right(frames, -value), pointers{left.data(), right.data()}
    {
    }
};

TEST(AudioStereoBus, AnOwnBufferGrowsForALongCopyAndAnExternalOneRefuses)
{
    Channels source(20, 0.5f), target(10);
    AudioStereoBus own, external, none;
    own.createBusWithOwnBuffer(10);
    external.createBusWithExternalBuffer(target.pointers, 10);

    float* before = own.left;
    own.copyFrom(source.pointers, 10);
    EXPECT_EQ(own.left, before);
    own.copyFrom(source.pointers, 20);
    EXPECT_EQ(own.length, 20);
    EXPECT_EQ(own.right[19], -0.5f);

    external.copyFrom(source.pointers, 10);
    EXPECT_EQ(target.left[9], 0.5f);
    EXPECT_THROW(external.copyFrom(source.pointers, 11), const char*);
    EXPECT_THROW(none.copyFrom(&own, 1), const char*);
}

TEST(AudioStereoBus, ClearsAndAdvancesWhatItSays)
{
    Channels channels(10, 1.0f);
    AudioStereoBus bus;
    bus.createBusWithExternalBuffer(channels.pointers, 10);
    bus.clear(5);
    EXPECT_EQ(channels.left[4], 0.0f);
    EXPECT_EQ(channels.left[5], 1.0f);
    bus.advanceBuffer(3);
    EXPECT_EQ(bus.left, channels.left.data() + 3);
    bus.createBusWithExternalBuffer(channels.pointers, 10);
    bus.clear(0);
    EXPECT_EQ(channels.right[9], 0.0f);

    bus.createBusWithOwnBuffer(4);
    const float* start = bus.left;
    bus.advanceBuffer(2);
    EXPECT_EQ(bus.left, start);
    bus.createBusWithOwnBuffer(0);
    EXPECT_EQ(bus.left, nullptr);
    EXPECT_EQ(bus.bufferType, AudioStereoBus::ownBuffer);
    EXPECT_EQ(bus.length, 0);
}

TEST(AudioBusInformation, WiresAtMostTwentyFourBusesASide)
{
    std::vector<float> sample(60, 0.0f);
    std::vector<float*> channels;
    for (float& each : sample)
        channels.push_back(&each);
    AudioBusInformation info(channels.data(), 30, channels.data(), 1, 1);
    EXPECT_EQ(info.numInputBuses, 30);
    EXPECT_EQ(info.inputs[23].right, &sample[47]);
    EXPECT_EQ(info.outputs[1].left, nullptr);
    info.advanceInput(0);
    info.advanceOutput(1);
    EXPECT_EQ(info.outputs[0].left, &sample[1]);
}

TEST(CNChannelBuffer, CopiesNoMoreThanThereIs)
{
    Orbel::CNChannelBuffer buffer;
    buffer.alloc(4, 1);
    Channels source(8, 0.25f), target(8);
    buffer.copy_from(source.pointers, 2, 8);
    buffer.copy_to(target.pointers, 2, 8);
    EXPECT_EQ(target.left[3], 0.25f);
    EXPECT_EQ(target.left[4], 0.0f);
    EXPECT_EQ(target.right[0], 0.0f);
    buffer.alloc(4, 0);
    EXPECT_EQ(buffer.numChannels, 0u);
}
