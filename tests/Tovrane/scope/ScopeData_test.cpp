// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/scope/CMultiLayerScopeDataProvider_SyncFlow.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace Tovra;
using Point = IScopeDataProvider::scope_data_point_t;
using Channel = CMultiLayerScopeDataProvider::channel_info_t;

namespace
{
// Ten samples a point (a hair less, since the length is no whole number), and as many points as asked for.
template <typename Provider>
void setUp(Provider& provider, int points, int layers = 1)
{
    provider.initialize(layers);
    provider.setNumDataPoints(points);
    provider.setSampleRate(1000.0f);
    provider.setVisibleTime(9.999f * float(points));
}

// A block of one layer with the values from first on, each one higher.
void play(CMultiLayerScopeDataProvider& provider, int samples, float first, int kind = Channel::twoBuffers)
{
    std::vector<float> left, right;
    for (int i = 0; i < samples; ++i)
        left.push_back(first + float(i)), right.push_back(-first - float(i));
    const Channel channel{kind, Channel::first, left.data(), right.data()};
    const Channel* const channels[] = {&channel};
    provider.update(channels, samples);
}

std::vector<float> maxima(CMultiLayerScopeDataProvider& provider, int count)
{
    std::vector<Point> points(size_t(count), Point{-99.0f, -99.0f});
    const bool got = provider.getScopeData(0, points.data(), count);
    std::vector<float> values;
    for (const Point& point : points)
        values.push_back(got ? point.max : -1.0f);
    return values;
}

using Values = std::vector<float>;
}

TEST(ScopeData, ClosesAPointForEachSliceWhateverTheBlocksAre)
{
    CMultiLayerScopeDataProvider provider;
    setUp(provider, 4);
    play(provider, 7, 1.0f);
    EXPECT_EQ(maxima(provider, 4), Values({0, 0, 0, 0})) << "the point is still open";
    play(provider, 25, 8.0f);
    EXPECT_EQ(maxima(provider, 4), Values({0, 10, 20, 30})) << "the oldest one first";
    play(provider, 28, 33.0f);
    EXPECT_EQ(maxima(provider, 9), Values({30, 40, 50, 60, -99, -99, -99, -99, -99}))
        << "no more than there are";
    provider.reset();
    play(provider, 10, 1.0f);
    EXPECT_EQ(maxima(provider, 4), Values({60, 30, 40, 10})) << "the ring stays, the next point is its first";

    provider.setSampleRate(1.0f); // less than a sample a point
    EXPECT_EQ(provider.samplesPerPoint(), 1.0f);
    provider.initialize(12);
    EXPECT_EQ(provider.getNumDataLayer(), 10);
    Point point;
    EXPECT_FALSE(provider.getScopeData(10, &point, 1));
    EXPECT_FALSE(provider.getScopeData(-1, &point, 1));
}

TEST(ScopeData, TakesTheExtremesOfTheSelectedBuffers)
{
    const float left[] = {1, -2, 3, 0, 0, 0, 0, 0, 0, 0}, right[] = {-7, 5, 0, 0, 0, 0, 0, 0, 0, 0};
    const struct
    {
        int kind, selection;
        Point plain, synced;
    } cases[] = {{Channel::oneBuffer, Channel::both, {-2, 3}, {-3, 2}},
                 {Channel::twoBuffers, Channel::first, {-2, 3}, {-2, 3}},
                 {Channel::twoBuffers, Channel::second, {-7, 5}, {-7, 5}},
                 {Channel::twoBuffers, Channel::both, {-7, 5}, {-7, 5}},
                 {7, Channel::both, {0, 0}, {0, 0}}};
    for (const auto& each : cases)
    {
        const Channel channel{each.kind, each.selection, left, right};
        const Channel* const channels[] = {&channel};
        CMultiLayerScopeDataProvider plain;
        CMultiLayerScopeDataProvider_SyncFlow synced;
        for (CMultiLayerScopeDataProvider* provider :
             {&plain, static_cast<CMultiLayerScopeDataProvider*>(&synced)})
        {
            setUp(*provider, 3);
            for (int i = 0; i < 3; ++i)
                provider->update(channels, 10);
            EXPECT_TRUE(provider->tryLock());
            std::vector<Point> points(3);
            provider->getScopeData(0, points.data(), 3);
            provider->unlock();
            const Point point = points[2];
            EXPECT_EQ(point, provider == &plain ? each.plain : each.synced) << each.kind << each.selection;
        }
    }
}

TEST(ScopeData, StartsASweepAtEverySecondTrigger)
{
    CMultiLayerScopeDataProvider_SyncFlow provider;
    setUp(provider, 6);
    play(provider, 10, 1.0f);
    provider.setSyncModeState(true);
    EXPECT_EQ(maxima(provider, 6), Values({0, 0, 0, 0, 0, 0}));
    play(provider, 30, 1.0f);
    EXPECT_EQ(maxima(provider, 6), Values({10, 20, 30, 0, 0, 0})) << "runs freely before there is a trigger";
    provider.setRemainingTriggerSamples(0);
    play(provider, 10, 31.0f);
    EXPECT_EQ(maxima(provider, 6), Values({10, 20, 30, 40, 0, 0})) << "the first trigger moves nothing";
    provider.setRemainingTriggerSamples(15);
    play(provider, 20, 41.0f);
    EXPECT_EQ(maxima(provider, 6), Values({10, 20, 30, 40, 50, 0})) << "the point at the trigger is dropped";
    provider.setRemainingTriggerSamples(0);
    provider.setRemainingTriggerSamples(-1); // called off
    play(provider, 60, 61.0f);
    EXPECT_EQ(maxima(provider, 6), Values({65, 75, 85, 95, 105, 115})) << "points begin at the trigger";
    play(provider, 20, 121.0f);
    EXPECT_EQ(maxima(provider, 6), Values({125, 135, 85, 95, 105, 115})) << "wraps like a free one";
    provider.clear();
    play(provider, 10, 141.0f);
    EXPECT_EQ(maxima(provider, 2), Values({145, 0})) << "new rings begin at the left";
}

TEST(ScopeData, IsHandedOverWhileItIsWritten)
{
    CMultiLayerScopeDataProvider_SyncFlow provider;
    setUp(provider, 8);
    provider.setSyncModeState(true);
    std::atomic<bool> plays = true;
    std::thread audio(
        [&]
        {
            while (plays)
            {
                provider.setRemainingTriggerSamples(30);
                play(provider, 64, 5.0f);
            }
        });
    int torn = 0, seen = 0;
    for (int i = 0; i < 2000 || seen < 1000; ++i)
    {
        if (i % 5 == 0)
            provider.setNumDataPoints(1 + i % 40);
        provider.setVisibleTime(float(10 + i % 50));
        if (!provider.tryLock())
            continue;
        Point points[64];
        provider.getScopeData(0, points, 64);
        provider.unlock();
        for (const Point& point : points)
            torn += point.min > point.max || point.max > 68.0f, seen += point.max > 0.0f;
    }
    plays = false;
    audio.join();
    EXPECT_EQ(torn, 0);
    EXPECT_GT(seen, 0);
}
