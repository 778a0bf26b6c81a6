// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/instance/EffectScope.h"
#include "effect/instance/Player.h"

#include <algorithm>
#include <gtest/gtest.h>

using Point = Tovra::IScopeDataProvider::scope_data_point_t;

namespace
{
constexpr int columns = 100;

std::vector<Point> pointsOf(EffectScope& scope, int layer)
{
    std::vector<Point> points(columns);
    EXPECT_TRUE(scope.data().tryLock());
    scope.data().getScopeData(layer, points.data(), columns);
    scope.data().unlock();
    return points;
}

// The points from the start of the sweep on, as what was played gives them.
std::vector<Point> expected(const std::vector<float>& a, const std::vector<float>& b, long start,
                            double samples)
{
    std::vector<Point> points;
    Point open{1e9f, -1e9f};
    for (long i = start; i < long(a.size()); ++i)
    {
        open = {std::min({open.min, a[size_t(i)], b[size_t(i)]}),
                std::max({open.max, a[size_t(i)], b[size_t(i)]})};
        if (double(i + 1 - start) < double(points.size() + 1) * samples)
            continue;
        points.push_back(open);
        open = {1e9f, -1e9f};
    }
    return points;
}
}

TEST(EffectScope, ShowsWhatWasPlayedSinceTheBeatAtItsLeftEdge)
{
    for (const int block : {64, 441, 5000})
    {
        Player player;
        EffectScope& scope = player.effect.getScope();
        player.set("LINKTIMES", 0.0f);
        player.set("RELEASTIME", 100.0f);
        player.ppq = 0.5;
        scope.show(true);
        scope.data().setNumDataPoints(columns);
        scope.data().setVisibleTime(1000.0f); // two beats
        player.play(44100 * 3, block);
        const std::vector<long> triggers = player.triggers();
        ASSERT_GE(triggers.size(), 5u);
        const std::size_t last = (triggers.size() - 2) / 2 * 2 + 1; // every second one starts a sweep
        // The first sample of a pre-fade still has full gain, and so the beat lies one sample ahead of its
        // fall.
        const long beat = triggers[last] - 1 + DuckingPath::lookAhead(player.get("CLICKFILTER"), player.rate);
        std::vector<float> shownGain = player.gain;
        for (float& value : shownGain)
            value = -value;
        const double samples = double(scope.data().samplesPerPoint());
        const auto gain = expected(shownGain, shownGain, beat, samples);
        const auto output = expected(player.left, player.right, beat, samples);
        ASSERT_GT(gain.size(), 20u);
        const auto shown = pointsOf(scope, EffectScope::gain), heard = pointsOf(scope, EffectScope::output);
        for (std::size_t i = 0; i < std::min<std::size_t>(gain.size(), columns); ++i)
        {
            ASSERT_EQ(shown[i], gain[i]) << "column " << i << ", blocks of " << block;
            ASSERT_EQ(heard[i], output[i]) << "column " << i << ", blocks of " << block;
        }
        const EffectScope::EnvelopePlace place = scope.getEnvelopePlace();
        EXPECT_TRUE(place.segment >= 0 && place.segment <= 5) << place.segment;
    }
}

TEST(EffectScope, GathersNothingWithoutAWindowAndBeginsEmpty)
{
    Player player;
    EffectScope& scope = player.effect.getScope();
    player.play(20000, 512);
    EXPECT_EQ(scope.data().getNumDataLayer(), 0) << "nothing is made before the first opening";
    EXPECT_EQ(scope.getEnvelopePlace().segment, -1);
    scope.show(true);
    scope.data().setNumDataPoints(columns);
    player.play(20000, 512);
    EXPECT_NE(pointsOf(scope, EffectScope::output), std::vector<Point>(columns));
    scope.show(false);
    const auto before = pointsOf(scope, EffectScope::output);
    player.play(20000, 512);
    EXPECT_EQ(pointsOf(scope, EffectScope::output), before);
    scope.show(true);
    EXPECT_EQ(pointsOf(scope, EffectScope::output), std::vector<Point>(columns));

    player.set("BYPASS", 1.0f);
    player.play(88200, 512); // a trigger that was armed before starts one more sweep
    for (const Point& point : pointsOf(scope, EffectScope::gain))
        EXPECT_EQ(point, (Point{1.0f, 1.0f})) << "full gain in bypass";
}
