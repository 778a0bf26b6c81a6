#include "effect/engine/CAHRModule2.h"

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
