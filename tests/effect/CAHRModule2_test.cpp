#include "effect/CAHRModule2.h"

#include <gtest/gtest.h>
#include <vector>

using Envelope = CAHRModule2;

// The product's first shape, at 44100 Hz: no attack, 20 ms of hold, 450 ms of release.
static Envelope makeEnvelope(float tempo, float attack = 0, float hold = 20, float release = 450)
{
    Envelope envelope;
    envelope.setParameter(Envelope::startPosition, 1.0f);
    envelope.setParameter(Envelope::peakLevel, 1.0f);
    envelope.setParameter(Envelope::attackTime, attack);
    envelope.setParameter(Envelope::holdTime, hold);
    envelope.setParameter(Envelope::releaseTime, release);
    envelope.setParameter(Envelope::closingTime, 4.0f);
    envelope.setTempo(tempo);
    envelope.reset();
    envelope.setTempo(tempo);
    return envelope;
}

static std::vector<float> run(Envelope& envelope, size_t samples)
{
    std::vector<float> levels;
    envelope.process(long(samples), [&](float level) { levels.push_back(level); });
    return levels;
}

TEST(CAHRModule2, TimesFollowTheTempo)
{
    for (float tempo : {60.0f, 120.0f, 128.0f, 174.0f})
    {
        SCOPED_TRACE(tempo);
        Envelope envelope = makeEnvelope(tempo, 100, 50, 200);
        envelope.start();
        const auto level = run(envelope, 44100);
        const double ms = 44.1 * 128.0 / tempo; // samples of a stored millisecond
        EXPECT_EQ(level[0], 0.0f);
        EXPECT_NEAR(level[size_t(50 * ms)], 0.5, 1e-3);
        EXPECT_NEAR(level[size_t(100 * ms) + 2], 1.0, 1e-3);
        EXPECT_EQ(level[size_t(125 * ms)], 1.0f);
        EXPECT_NEAR(level[size_t(250 * ms)], 0.5, 1e-3);
        EXPECT_NEAR(level[size_t(350 * ms) + 3], 0.0, 1e-3);
    }
}

TEST(CAHRModule2, AShapeLongerThanTheBeatIsClosedInFourMilliseconds)
{
    Envelope envelope = makeEnvelope(120); // 21.33 + 480 ms in a beat of 500
    envelope.start();
    const auto level = run(envelope, 23000);
    EXPECT_EQ(level[0], 1.0f); // the attack is skipped
    EXPECT_GT(level[22050], 0.002f);
    const float slopeBefore = level[22049] - level[22050];
    const float slopeAfter = level[22060] - level[22061]; // 0.0028 in 176.4 samples
    EXPECT_NEAR(slopeBefore, 1.0 / 480.0 / 44.1, 2e-6);
    EXPECT_NEAR(slopeAfter, level[22051] / 176.4, 1e-6);
    EXPECT_EQ(level[22050 + 180], 0.0f);
    EXPECT_TRUE(envelope.isConstant());
}

TEST(CAHRModule2, AStoredAttackOfZeroTakesFourMillisecondsWhereItIsNotSkipped)
{
    Envelope envelope = makeEnvelope(120, 0, 100, 100);
    envelope.setParameter(Envelope::startPosition, 0.5f); // halfway: the end of the hold
    envelope.start();
    const auto level = run(envelope, 22050);
    // Release and rest, then the attack once more, until the beat is over.
    const double ms = 44.1 * 128.0 / 120.0;
    const size_t rest = 22050 - size_t(200 * ms) - 176;
    const size_t again = size_t(100 * ms) + rest;
    EXPECT_NEAR(level[again - 20], 0.0, 1e-6);
    EXPECT_NEAR(level[again + 90], 0.5, 0.05);
    EXPECT_EQ(level[again + 190], 1.0f);
}

TEST(CAHRModule2, AStartWithinTheReleaseEntersItsCurveThere)
{
    struct Case
    {
        float position, curve, first;
    };
    const Case table[] = {
        {1.0f, 0, 1.0f},    // at the beginning: the hold
        {0.0f, 0, 1.0f},    // a whole shape further is the beginning again
        {0.5f, 0, 0.75f},   // 150 of 100 + 200: a quarter into the release
        {0.5f, 1, 0.9375f}, // late: 1 - 0.25^2
        {0.5f, -1, 0.5625f} // early: 0.75^2
    };
    for (const Case& each : table)
    {
        SCOPED_TRACE(testing::Message() << each.position << ", curve " << each.curve);
        Envelope envelope = makeEnvelope(120, 0, 100, 200);
        envelope.setParameter(Envelope::startPosition, each.position);
        envelope.setParameter(Envelope::releaseCurve, each.curve);
        envelope.start();
        EXPECT_FLOAT_EQ(envelope.getFirstValue(), each.first);
        EXPECT_EQ(envelope.process(), envelope.getFirstValue());
        envelope.setParameter(Envelope::releaseCurve, 5.0f);
        EXPECT_FLOAT_EQ(envelope.getFirstValue(), each.first);
    }
}

TEST(CAHRModule2, AnotherReleaseTimeWithinTheReleaseKeepsThePlaceAndChangesTheSlope)
{
    Envelope envelope = makeEnvelope(128, 0, 1, 200);
    envelope.start();
    const auto before = run(envelope, 4000);
    envelope.setParameter(Envelope::releaseTime, 100);
    const auto after = run(envelope, 100);
    EXPECT_NEAR(after[0], before.back(), 2e-4);
    EXPECT_NEAR(after[0] - after[1], 2 * (before[3998] - before[3999]), 1e-6);
}

TEST(CAHRModule2, IsTheSameInPiecesAndSampleBySample)
{
    for (float curve : {0.0f, 2.5f, -4.0f})
    {
        Envelope whole = makeEnvelope(140, 30, 50, 200);
        whole.setParameter(Envelope::attackCurve, curve);
        whole.setParameter(Envelope::releaseCurve, -curve);
        whole.setParameter(Envelope::startPosition, 0.9f);
        whole.start();
        Envelope single = whole;
        for (float level : run(whole, 30000))
            ASSERT_EQ(level, single.process());
    }
}

TEST(CAHRModule2, HoldsAtThePeakUntilItIsLetGo)
{
    Envelope envelope = makeEnvelope(120, 0, 10, 100);
    envelope.holdUntilStop = true;
    envelope.start();
    EXPECT_EQ(run(envelope, 60000).back(), 1.0f); // longer than a beat: held samples don't count
    envelope.stop();
    EXPECT_LT(run(envelope, 4000).back(), 0.5f);
}
