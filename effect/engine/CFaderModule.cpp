// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/CFaderModule.h"

#include "effect/engine/RaisedCosine.h"

#include <algorithm>
#include <cstring>

void CFaderModule::setFadeSamples(int n)
{
    fadeStep = 1.0f / float(n);
    fadeSamples = n;
    value = 1.0f;
}

// Worked out four at a time, whatever the count of steps. The values follow one from the other.
void CFaderModule::nextWeights(float (&weights)[maximumSteps], int steps)
{
    constexpr int lanes = RaisedCosine::lanes;
    static_assert(maximumSteps % lanes == 0);
    const int falling = int(std::clamp(fadeSamples + 1, 0L, long(steps))); // then the value stays 0
    float x = value;
    for (int i = 0; i < maximumSteps; i += lanes)
    {
        const float first = x - fadeStep, second = first - fadeStep, third = second - fadeStep;
        const RaisedCosine::Lanes values = {first, second, third, x = third - fadeStep};
        const RaisedCosine::Lanes result = RaisedCosine::weights(values);
        std::memcpy(weights + i, &result, sizeof result);
        if (falling - 1 >= i && falling - 1 < i + lanes)
            value = values[falling - 1 - i];
    }
    std::fill(weights + falling, weights + maximumSteps, 0.0f);
    if (falling < steps)
        value = 0.0f;
    fadeSamples -= steps;
}
