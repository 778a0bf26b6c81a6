// SPDX-License-Identifier: GPL-3.0-or-later
// What every host adapter keeps, whatever its format: run by each adapter's tests over RecordingEffect.
//
// An adapter's tests add a driver, which is a small host of that format, and one line:
//
//     INSTANTIATE_TYPED_TEST_SUITE_P(VST3, AdapterContract, VST3Driver);
//
//     struct Driver
//     {
//         static constexpr bool growsForLongBlocks; // or it refuses them
//         bool make();                              // an adapter; false if it has no effect
//         void destroy();
//         bool setUp(double rate, int largestBlock);
//         void automate(int parameter, float position, int offset); // by the next process or flush
//         bool process(const HostBlock& block);     // false if the block was refused
//         void flush();                             // a call without audio, or what the format has for it
//         std::string state();
//         void setState(const std::string& bytes);
//         float defaultPosition(int parameter);     // as the host sees it
//     };
#pragma once

#include "support/RecordingEffect.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>

template <typename Driver>
class AdapterContract : public testing::Test
{
protected:
    static constexpr int largest = 256;
    static constexpr float untouched = -77.0f;

    AdapterContract() { RecordingEffect::plan = {}; }

    void start()
    {
        ASSERT_TRUE(driver.make());
        ASSERT_TRUE(driver.setUp(48000.0, largest));
    }
    RecordingEffect& effect() { return *RecordingEffect::latest; }
    float value(int parameter)
    {
        return effect().properties[size_t(parameter)]->getCurrentValue_normalized();
    }

    // A ramp on so many channels in, and what came out on so many others.
    bool process(int frames, int numInputs = 2, int numOutputs = 2)
    {
        for (std::vector<float>& each : in)
            each.resize(size_t(frames));
        for (std::vector<float>& each : out)
            each.assign(size_t(frames) + 1, untouched);
        for (int i = 0; i < frames; ++i)
            in[0][size_t(i)] = 1.0f + float(i), in[1][size_t(i)] = -1.0f - float(i);
        HostBlock block{frames, {}, {}};
        for (int i = 0; i < numInputs; ++i)
            block.inputs.push_back(in[i].data());
        for (int i = 0; i < numOutputs; ++i)
            block.outputs.push_back(out[i].data());
        return driver.process(block);
    }
    // Whether an output is its input times factor from the first to the last frame, and nothing beyond.
    bool isScaled(int channel, float factor, int input)
    {
        for (size_t i = 0; i < in[input].size(); ++i)
            if (out[channel][i] != factor * in[input][i])
                return false;
        return out[channel].back() == untouched;
    }

    Driver driver;
    std::vector<float> in[2], out[2];
};

TYPED_TEST_SUITE_P(AdapterContract);

TYPED_TEST_P(AdapterContract, PlaysBlocksOfEverySize)
{
    this->start();
    for (const int frames : {1, 256, 0, 100, 257, 5000, 256})
    {
        SCOPED_TRACE(frames);
        this->effect().pieces.clear();
        const bool taken = frames <= this->largest || TypeParam::growsForLongBlocks;
        EXPECT_EQ(this->process(frames), taken);
        if (taken)
        {
            EXPECT_TRUE(this->isScaled(0, 2.0f, 0) && this->isScaled(1, 3.0f, 1));
            int processed = 0;
            for (const auto& piece : this->effect().pieces)
                processed += piece.frames;
            EXPECT_EQ(processed, frames);
        }
        else
            EXPECT_EQ(std::count(this->out[0].begin(), this->out[0].end(), this->untouched), frames + 1);
    }
}

TYPED_TEST_P(AdapterContract, WorksInPlace)
{
    this->start();
    float left[] = {1, 2, 3}, right[] = {4, 5, 6};
    ASSERT_TRUE(this->driver.process({3, {left, right}, {left, right}}));
    EXPECT_EQ(left[2], 6.0f);
    EXPECT_EQ(right[2], 18.0f);
    float mono[] = {1, 2, 3}, other[3] = {};
    ASSERT_TRUE(this->driver.process({3, {mono}, {mono, other}}));
    EXPECT_EQ(mono[2], 6.0f);
    EXPECT_EQ(other[2], 9.0f) << "the right side must not hear what the left one put out";
}

TYPED_TEST_P(AdapterContract, StandsInForChannelsThatTheHostLacks)
{
    this->start();
    ASSERT_TRUE(this->process(64, 1, 2));
    EXPECT_TRUE(this->isScaled(0, 2.0f, 0));
    EXPECT_TRUE(this->isScaled(1, 3.0f, 0)) << "a mono input is heard on both sides";
    ASSERT_TRUE(this->process(64, 2, 1));
    EXPECT_TRUE(this->isScaled(0, 2.0f, 0));
    EXPECT_EQ(this->out[1][0], this->untouched);
}

TYPED_TEST_P(AdapterContract, BringsAutomationInWithAndWithoutAudio)
{
    this->start();
    const struct
    {
        int frames;
        bool audio;
        float position;
    } cases[] = {{64, true, 0.25f}, {0, false, 0.5f}, {1, true, 0.75f}, {0, true, 1.0f}, {64, true, 0.0f}};
    for (const auto& each : cases)
    {
        SCOPED_TRACE(each.position);
        this->driver.automate(2, each.position, 40);
        if (each.audio)
            EXPECT_TRUE(this->process(each.frames));
        else
            this->driver.flush();
        EXPECT_EQ(this->value(2), each.position);
    }
    this->driver.automate(2, 0.5f, 0);
    EXPECT_EQ(this->process(100000), TypeParam::growsForLongBlocks);
    this->process(64);
    EXPECT_EQ(this->value(2), TypeParam::growsForLongBlocks ? 0.5f : 0.0f)
        << "of a refused block nothing stays";
}

TYPED_TEST_P(AdapterContract, ShowsTheDefaultOfEveryParameter)
{
    RecordingEffect::plan.defaultValue = 5.0f;
    this->start();
    for (int i = 0; i < 3; ++i)
    {
        const bool bypass = i == 1;
        const float position = this->effect().properties[size_t(i)]->getDefaultValue_normalized();
        EXPECT_EQ(this->driver.defaultPosition(i), bypass ? 0.0f : position) << i;
    }
}

TYPED_TEST_P(AdapterContract, SurvivesTornStatesAndTakesWholeOnes)
{
    this->start();
    const std::string whole = this->driver.state();
    for (size_t size = 0; size < whole.size(); ++size)
    {
        this->driver.setState(whole.substr(0, size));
        EXPECT_EQ(this->effect().takeLog().find("chunk state;"), std::string::npos) << size;
    }
    this->driver.setState(whole);
    EXPECT_NE(this->effect().takeLog().find("chunk state;"), std::string::npos);
    EXPECT_EQ(this->driver.state(), whole);
}

TYPED_TEST_P(AdapterContract, IsMadeAndDestroyedAnyNumberOfTimes)
{
    for (int i = 0; i < 3; ++i)
    {
        this->start();
        EXPECT_TRUE(this->process(64));
        this->driver.destroy();
        EXPECT_EQ(RecordingEffect::latest, nullptr);
    }
    RecordingEffect::plan.makes = false;
    EXPECT_FALSE(this->driver.make());
}

// A host plays and automates on one thread, and saves and restores on another.
TYPED_TEST_P(AdapterContract, SavesAndRestoresWhileItPlays)
{
    constexpr int blocks = 2000;
    this->start();
    const std::string whole = this->driver.state();
    this->effect().takeLog();
    std::atomic<bool> done = false;
    std::atomic<int> wrong = 0;
    std::thread audio(
        [&]
        {
            for (int i = 1; i <= blocks; ++i)
            {
                const float position = float(i % 256) / 256.0f;
                this->driver.automate(2, position, i % 64);
                const bool played = this->process(64) && this->isScaled(0, 2.0f, 0);
                wrong += !played || this->value(2) != position;
            }
            done = true;
        });
    int restored = 0;
    for (; !done; ++restored)
    {
        this->driver.setState(whole);
        EXPECT_EQ(this->driver.state(), whole);
        if (this->HasFailure())
            break;
    }
    audio.join();
    EXPECT_EQ(wrong, 0);
    const std::string log = this->effect().takeLog();
    int chunks = 0;
    for (size_t at = log.find("chunk state;"); at != log.npos; at = log.find("chunk state;", at + 1))
        ++chunks;
    EXPECT_EQ(chunks, restored);
}

REGISTER_TYPED_TEST_SUITE_P(AdapterContract, PlaysBlocksOfEverySize, WorksInPlace,
                            StandsInForChannelsThatTheHostLacks, BringsAutomationInWithAndWithoutAudio,
                            ShowsTheDefaultOfEveryParameter, SurvivesTornStatesAndTakesWholeOnes,
                            IsMadeAndDestroyedAnyNumberOfTimes, SavesAndRestoresWhileItPlays);
