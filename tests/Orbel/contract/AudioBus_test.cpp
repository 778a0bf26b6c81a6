// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/AudioBusInformation.h"

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

    own.copyFrom(source.pointers, 20);
    EXPECT_EQ(own.length, 20);
    EXPECT_EQ(own.right[19], -0.5f);

    external.copyFrom(source.pointers, 10);
    EXPECT_EQ(target.left[9], 0.5f);
    EXPECT_THROW(external.copyFrom(source.pointers, 11), const char*);
    EXPECT_THROW(none.copyFrom(&own, 1), const char*);
}

TEST(AudioStereoBus, OnlyAnExternalBufferIsMovedOn)
{
    Channels channels(10);
    AudioStereoBus own, external, none;
    own.createBusWithOwnBuffer(10);
    external.createBusWithExternalBuffer(channels.pointers, 10);
    const float* const ownLeft = own.left;
    for (AudioStereoBus* bus : {&own, &external, &none})
        bus->advanceBuffer(3);
    EXPECT_EQ(own.left, ownLeft);
    EXPECT_EQ(external.right, &channels.right[3]);
    EXPECT_EQ(none.left, nullptr);
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
}
