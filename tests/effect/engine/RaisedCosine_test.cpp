// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/RaisedCosine.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

TEST(RaisedCosine, KeepsItsBoundAndItsEnds)
{
    float last = 0.0f;
    for (int i = 0; i <= 10000; ++i)
    {
        const float x = float(i) / 10000.0f;
        const RaisedCosine::Lanes weights = RaisedCosine::weights(RaisedCosine::Lanes{x, 1.0f - x, x, -x});
        const double exact = 0.5 - 0.5 * std::cos(std::numbers::pi * double(x));
        ASSERT_NEAR(weights[0], exact, x <= 0.5f ? 1e-7 : 3.81e-4) << x;
        ASSERT_NEAR(weights[0] + weights[1], 1.0, 3.81e-4) << x;
        ASSERT_EQ(weights[2], weights[0]);
        ASSERT_EQ(weights[3], weights[0]) << "even";
        ASSERT_TRUE(weights[0] >= 0.0f && weights[0] <= 1.0f && weights[0] >= last - 1e-7f) << x;
        last = weights[0];
    }
}
