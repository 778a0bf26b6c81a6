// SPDX-License-Identifier: GPL-3.0-or-later
// The pre-fade of the ducker: a value that falls from 1 to 0 in equal steps, and its weight on the raised
// cosine. [audio thread]
#pragma once

struct CFaderModule
{
    float fadeStep = 1.0f / 150.0f; // a sample
    long fadeSamples = 150;         // samples left; below 0 the value stays 0
    float value = 1.0f;
    bool active = false;

    // From 1 again, over n samples. Leaves active as it is. With n of 0 the first step is infinite.
    void setFadeSamples(int n);

    static constexpr int maximumSteps = 24;
    // Takes that many steps, at most maximumSteps, and writes for each the weight of what is faded out. The
    // weights after those have no meaning.
    void nextWeights(float (&weights)[maximumSteps], int steps);
};
