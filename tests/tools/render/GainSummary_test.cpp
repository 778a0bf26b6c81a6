// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/GainSummary.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

TEST(GainSummary, CountsFallsAndNamesTheDeepest)
{
    const std::pair<std::vector<float>, const char*> cases[] = {
        {{1, 0.998f, 1, 0.998f}, "no ducks"},               // too little to hear
        {{1, 0.5f, 0.25f, 0.5f, 1}, "1 duck, to -12.0 dB"}, // a fall in steps is one
        {{1, 0, 0.4f, 0.1f, 0.3f}, "2 ducks, the deepest to silence"},
        {{1, 0.996f, 0.992f, 0.988f, 0.984f}, "1 duck, to -0.1 dB"}, // slowly
        {{0, 0, 0.5f, 1}, "1 duck, to silence"},                     // from the start
    };
    for (const auto& [gains, text] : cases)
    {
        lodex::GainSummary summary;
        for (const float gain : gains)
        {
            const float record = 1.0f - gain - gain;
            summary.add(&record, 1);
        }
        EXPECT_EQ(summary.text(), text);
    }
}
