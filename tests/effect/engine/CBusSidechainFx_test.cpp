// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/CBusSidechainFx.h"
#include "effect/engine/ExactGain.h"
#include "effect/engine/PlainDucker.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <vector>

using Fx = CBusSidechainFx;

// The real ducker and the plain one, fed with the same.
struct Pair
{
    Fx fx;
    plain::Ducker plain;
    std::mt19937 random{1};

    explicit Pair(unsigned seed) : random(seed) {}

    float uniform(float low, float high) { return std::uniform_real_distribution<float>(low, high)(random); }
    int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

    void set(int index, float value)
    {
        fx.setParameter(index, value);
        plain.target[index] = value;
    }

    void setTempo(float bpm)
    {
        fx.setTempo(bpm);
        plain.setTempo(bpm);
    }

    void setTimeAdjust(float beats)
    {
        fx.setTimeAdjust(beats);
        plain.setTimeAdjust(beats);
    }

    void setTimeOffset(float offset)
    {
        fx.setTimeOffset(offset);
        plain.setTimeOffset(offset);
    }

    void setPreFade(long samples)
    {
        fx.setPreFadeLength(samples);
        plain.fadeLength = samples;
    }

    void reset()
    {
        fx.reset();
        plain.reset();
    }

    // Noise over 60 decades, with the subnormal numbers and both zeros among it.
    float sample()
    {
        switch (whole(0, 4))
        {
        case 0:
            return std::bit_cast<float>(uint32_t(random()) & 0x80FFFFFFu);
        case 1:
            return uniform(-1, 1) * 1e-36f;
        default:
            return uniform(-1, 1);
        }
    }

    void process(int frames)
    {
        std::vector<float> left, right, record(size_t(frames), 0.0f), plainRecord(record);
        for (int i = 0; i < frames; ++i)
        {
            left.push_back(sample());
            right.push_back(sample());
        }
        std::vector<float> plainLeft(left), plainRight(right);
        float* channels[] = {left.data(), right.data()};
        Orbel::AudioStereoBus bus;
        bus.createBusWithExternalBuffer(channels, frames);
        fx.process(bus, record.data(), frames);
        plain.process(plainLeft.data(), plainRight.data(), plainRecord.data(), frames);
        for (size_t i = 0; i < size_t(frames); ++i)
        {
            ASSERT_EQ(std::bit_cast<uint32_t>(record[i]), std::bit_cast<uint32_t>(plainRecord[i])) << i;
            ASSERT_EQ(std::bit_cast<uint32_t>(left[i]), std::bit_cast<uint32_t>(plainLeft[i])) << i;
            ASSERT_EQ(std::bit_cast<uint32_t>(right[i]), std::bit_cast<uint32_t>(plainRight[i])) << i;
        }
        ASSERT_EQ(fx.getGainMeter(), plain.meter);
    }

    void changeSomething()
    {
        const float curve[] = {0, 0, 3.5f, -2.25f, 8, -8};
        const float beats[] = {0.25f, 0.5f, 1.0f, 4.0f / 3.0f};
        switch (whole(0, 11))
        {
        case 0:
            return set(Fx::attackTime, uniform(0, 300) * float(whole(0, 1)));
        case 1:
            return set(Fx::holdTime, uniform(1, 200));
        case 2:
            return set(Fx::releaseTime, uniform(20, 500));
        case 3:
            return set(Fx::attackCurve, curve[whole(0, 5)]);
        case 4:
            return set(Fx::releaseCurve, curve[whole(0, 5)]);
        case 5:
            return set(Fx::strength, plain.target[Fx::strength] > 0.5f ? uniform(0, 1) : 1.0f);
        case 6: // within the band in which a move eases in
            return set(Fx::strength, std::max(0.0f, plain.target[Fx::strength] - 0.0015f));
        case 7:
            return setPreFade(whole(0, 600) * whole(0, 1));
        case 8:
            return setTempo(uniform(40, 400));
        case 9:
            return setTimeAdjust(beats[whole(0, 3)]);
        case 10:
            return setTimeOffset(uniform(0, 1) * float(whole(0, 1)));
        default:
            fx.forceNoTrigger();
            plain.toStart = plain.toTrigger = -1;
        }
    }

    void arm(long distance)
    {
        fx.setTriggers(distance);
        plain.setTriggers(distance);
    }
};

TEST(CBusSidechainFx, EqualsThePlainDuckerToTheLastBit)
{
    for (unsigned seed = 0; seed < 60; ++seed)
    {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Pair pair(seed);
        const float rate = pair.uniform(8000, 192000);
        pair.fx.setSampleRate(rate);
        pair.plain.setSampleRate(rate);
        if (seed % 5)
            pair.reset();
        for (int block = 0; block < 60 && !testing::Test::HasFatalFailure(); ++block)
        {
            for (int changes = pair.whole(0, 4); changes > 0; --changes)
                pair.changeSomething();
            if (pair.whole(0, 2) == 0)
                pair.arm(pair.whole(0, 3000) * pair.whole(0, 3));
            if (pair.whole(0, 40) == 0)
                pair.reset();
            pair.process(pair.whole(0, 1) ? pair.whole(1, 2000) : pair.whole(1, 40));
        }
    }
}

TEST(CBusSidechainFx, ChangesOfTheShapeCountOneByOneWhileTheEnvelopeCloses)
{
    Pair pair(7);
    pair.set(Fx::releaseTime, 500);
    pair.set(Fx::holdTime, 200);
    pair.setTempo(160);
    pair.reset();
    pair.arm(0);
    pair.process(16538 + 60); // the beat, and a part of the closing
    for (int i = 0; i < 3; ++i)
        pair.setTimeOffset(0.25f);
    pair.process(400);
}

// Levels at a full depth, straight from the gain record: 1 - 2 x gain = 2 x level - 1.
static std::vector<float> levels(Fx& fx, int frames)
{
    std::vector<float> left(size_t(frames), 1.0f), right(left), record(left);
    float* channels[] = {left.data(), right.data()};
    Orbel::AudioStereoBus bus;
    bus.createBusWithExternalBuffer(channels, frames);
    fx.process(bus, record.data(), frames);
    for (float& value : record)
        value = (value + 1.0f) / 2.0f;
    return record;
}

TEST(CBusSidechainFx, ATriggerFadesInAheadOfTheEnvelopeWithoutAStep)
{
    Fx fx;
    fx.setTempo(120);
    fx.setPreFadeLength(130);
    fx.setParameter(Fx::holdTime, 20);
    fx.setParameter(Fx::releaseTime, 450);
    fx.reset();
    levels(fx, 1);     // idle
    fx.setTriggers(0); // the hold of a first cycle: its level is 1
    levels(fx, 131);   // that fade still leads to where the start before it was
    fx.setTriggers(40000);
    const auto level = levels(fx, 40000 + 131);
    for (size_t i = 1; i < 22050 - 800; ++i) // hold and release: down from 1, never up
        ASSERT_LE(level[i], level[i - 1]) << i;
    EXPECT_EQ(level[30000], 0.0f);
    EXPECT_NEAR(level[40000 + 65], 0.5, 0.03); // the middle of a raised cosine
    EXPECT_EQ(level[40000 + 130], 1.0f);
    for (size_t i = 40001; i < level.size(); ++i) // pi / 2 / 130 is the cosine's steepest
        ASSERT_LE(std::fabs(level[i] - level[i - 1]), 0.0125f) << i;
}

TEST(ExactGain, IsNeededForTinySamplesAndNotForInfinitiesAndNaNs)
{
    const float infinity = INFINITY;
    for (long count = 0; count < 12; ++count)
        for (long place = 0; place < 12; ++place)
            for (float odd : {0.0f, -0.0f, 1e-45f, -1e-30f, 1e-24f, -1e-20f, infinity, -infinity, NAN})
            {
                std::vector<float> samples(12, 0.5f), zeros(12, 0.0f);
                samples[size_t(place)] = odd;
                const bool isInside = place < count;
                EXPECT_EQ(needsExactGain(samples.data(), samples.data(), count),
                          isInside && std::fabs(odd) < 0x1p-80f);
                EXPECT_EQ(needsExactGain(zeros.data(), samples.data(), count),
                          count > 0 && !(isInside && !std::isfinite(odd)));
            }
}

TEST(CBusSidechainFx, InfinitiesAndNaNsAmongZerosStayWhatTheyAre)
{
    Pair pair(3);
    pair.set(Fx::strength, 0.5f);
    pair.reset();
    for (float odd : {INFINITY, -INFINITY, NAN})
    {
        std::vector<float> left(64, 0.0f), right(64, 0.0f), record(64);
        left[20] = right[41] = odd;
        float* channels[] = {left.data(), right.data()};
        Orbel::AudioStereoBus bus;
        bus.createBusWithExternalBuffer(channels, 64);
        pair.fx.process(bus, record.data(), 64);
        for (size_t i = 0; i < 64; ++i)
            for (float sample : {left[i], right[i]})
                EXPECT_TRUE(sample == 0.0f || sample == odd || (std::isnan(odd) && std::isnan(sample)))
                    << sample;
        EXPECT_FALSE(left[20] == 0.0f || right[41] == 0.0f);
    }
}

TEST(ExactGain, MultipliesAndRoundsTinyNumbersAsTheProcessorDoes)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<float> gains(0.0f, 1.0f);
    for (int i = 0; i < 200000; ++i)
    {
        // Both signs; subnormal, tiny, and any size up to 2^127.
        const uint32_t masks[] = {0x80FFFFFFu, 0x99FFFFFFu, 0xFEFFFFFFu};
        const float x = std::bit_cast<float>(uint32_t(random()) & masks[i % 3]);
        const float g = i % 7 ? gains(random) : float(i / 7 % 3) * 0.5f;
        float product = x, one = 1.0f;
        multiplyExactly(product, one, g);
        ASSERT_EQ(std::bit_cast<uint32_t>(product), std::bit_cast<uint32_t>(x * g)) << x << " x " << g;
        ASSERT_EQ(one, g);
        const double wide = std::min(double(std::fabs(x)) * double(g), 1e30);
        ASSERT_EQ(roundedToSingle(wide), double(float(wide))) << wide;
    }
}
