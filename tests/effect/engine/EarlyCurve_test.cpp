// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/EarlyCurve.h"

#include <algorithm>
#include <bit>
#include <gtest/gtest.h>
#include <random>

TEST(EarlyCurve, IsPowToTheLastBitAlongSegmentsOfEveryLengthAndAfterJumps)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<float> uniform(0.0f, 1.0f);
    EarlyCurve early;
    long different = 0;
    for (int segment = 0; segment < 2000; ++segment)
    {
        const float curve = segment % 9 == 0 ? -8.0f : -8.0f * uniform(random) - 1e-4f;
        const float step = std::pow(10.0f, -6.0f * uniform(random));
        float x = segment % 3 == 0 ? 0.0f : uniform(random);
        early.setCurve(curve);
        for (int i = 0; i < 400; ++i, x += step)
        {
            const float inside = std::min(x, 1.0f); // the end itself is among the cases
            if (x > 1.5f)
                x = 0.0f;
            different += std::bit_cast<uint32_t>(early.at(inside)) !=
                         std::bit_cast<uint32_t>(EarlyCurve::exact(inside, curve));
        }
    }
    EXPECT_EQ(different, 0);
}
