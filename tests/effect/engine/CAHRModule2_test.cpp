// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/CAHRModule2.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

using Envelope = CAHRModule2;

TEST(CAHRModule2, TimesFollowTheTempo)
{
    for (float tempo : {60.0f, 174.0f})
    {
        SCOPED_TRACE(tempo);
        Envelope envelope;
        envelope.setParameter(Envelope::startPosition, 1.0f);
        envelope.setParameter(Envelope::peakLevel, 1.0f);
        envelope.setParameter(Envelope::attackTime, 100);
        envelope.setParameter(Envelope::holdTime, 50);
        envelope.setParameter(Envelope::releaseTime, 200);
        envelope.setTempo(tempo);
        envelope.start();
        std::vector<float> level;
        envelope.process(44100, [&](float each) { level.push_back(each); });
        const double ms = 44.1 * 128.0 / tempo; // samples of a stored millisecond
        EXPECT_EQ(level[0], 0.0f);
        EXPECT_NEAR(level[size_t(50 * ms)], 0.5, 1e-3);
        EXPECT_NEAR(level[size_t(100 * ms) + 2], 1.0, 1e-3);
        EXPECT_EQ(level[size_t(125 * ms)], 1.0f);
        EXPECT_NEAR(level[size_t(250 * ms)], 0.5, 1e-3);
        EXPECT_NEAR(level[size_t(350 * ms) + 3], 0.0, 1e-3);
    }
}

// A shape of 100, 50 and 200 ms at 128 BPM, in which a stored millisecond lasts 44.1 samples.
struct Shape : Envelope
{
    explicit Shape(float offset = 0.0f)
    {
        setParameter(startPosition, 1.0f - offset);
        setParameter(peakLevel, 1.0f);
        setParameter(attackTime, 100);
        setParameter(holdTime, 50);
        setParameter(releaseTime, 200);
        setParameter(closingTime, 4);
        setTempo(128);
        reset();
    }

    float levelAfter(int samples)
    {
        float level = 0.0f;
        for (; samples > 0; --samples)
            level = process();
        return level;
    }
};

TEST(CAHRModule2, CurvesBendLateAboveZeroAndEarlyBelow)
{
    for (float curve : {0.0f, 2.5f, 8.0f, -1.25f, -8.0f})
    {
        Shape shape;
        shape.setParameter(Envelope::attackCurve, curve);
        shape.setParameter(Envelope::releaseCurve, curve);
        shape.start();
        const auto bent = [curve](double x)
        { return curve < 0.0f ? 1.0 - std::pow(1.0 - x, 1.0 - curve) : std::pow(x, curve + 1.0); };
        EXPECT_NEAR(shape.levelAfter(2205 + 1), bent(0.5), 1e-3) << curve;
        EXPECT_NEAR(shape.levelAfter(4410 + 2205), 1.0 - bent(0.25), 2e-3) << curve;
    }
}

TEST(CAHRModule2, EntersItsCycleWhereTheOffsetPointsAndWrapsOnce)
{
    struct Case
    {
        float offset, attack, first;
    };
    const Case table[] = {
        {0.0f, 100, 0.0f},
        {1.0f, 100, 0.0f}, // the beginning
        {0.1f, 100, 0.35f},
        {0.35f, 100, 1.0f},    // in the attack, in the hold
        {0.75f, 100, 0.4375f}, // 112.5 ms into the release
        {0.0f, 0.5f, 1.0f},    // below a millisecond the attack is passed over
        {0.0f, std::nextafter(1.0f, 0.0f), 1.0f},
        {0.0f, 1.0f, 0.0f},
    };
    for (const Case& each : table)
    {
        SCOPED_TRACE(testing::Message() << "offset " << each.offset << ", attack " << each.attack);
        Shape shape(each.offset);
        shape.setParameter(Envelope::attackTime, each.attack);
        shape.start();
        EXPECT_NEAR(shape.getFirstValue(), each.first, 1e-5);
        EXPECT_NEAR(shape.process(), each.first, 1e-5);
        const float before = shape.getFirstValue();
        shape.setParameter(Envelope::releaseTime, 20);
        EXPECT_EQ(shape.getFirstValue(), before) << "it belongs to its start";
    }

    Shape wrapping(0.75f); // 87.5 ms of release, 118.75 of rest, then the attack once more
    wrapping.start();
    EXPECT_EQ(wrapping.levelAfter(int(150 * 44.1)), 0.0f);
    EXPECT_NEAR(wrapping.levelAfter(int((87.5 + 118.75 + 50 - 150) * 44.1)), 0.5, 1e-2);
}

TEST(CAHRModule2, ClosesInFourMillisecondsWhenTheBeatIsOver)
{
    Shape shape;
    shape.setParameter(Envelope::releaseTime, 500);
    shape.start();
    const int beat = 20671; // 468.75 ms
    const float last = shape.levelAfter(beat + 1);
    EXPECT_NEAR(last, 1.0 - (468.75 - 150) / 500, 1e-3);
    EXPECT_NEAR(shape.levelAfter(90), last / 2, 0.02f);
    EXPECT_EQ(shape.levelAfter(90), 0.0f);
    EXPECT_TRUE(shape.isConstant());
}

TEST(CAHRModule2, ManySamplesAtOnceAreTheSameAsOneByOne)
{
    for (float curve : {0.0f, 3.0f, -3.0f})
    {
        Shape one(0.6f), many(0.6f);
        for (Shape* each : {&one, &many})
        {
            each->setParameter(Envelope::attackCurve, curve);
            each->setParameter(Envelope::releaseCurve, curve);
            each->start();
        }
        for (long run : {1L, 7L, 5000L, 23L, 30000L})
            many.process(run, [&](float level) { ASSERT_EQ(level, one.process()); });
    }
}
