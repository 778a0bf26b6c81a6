// SPDX-License-Identifier: GPL-3.0-or-later
// What the benchmarks play: two seconds at 44100 Hz, round and round.
#pragma once

#include <cmath>
#include <random>
#include <vector>

namespace bench
{
constexpr int signalFrames = 1 << 17; // a multiple of every block size

enum class Signal
{
    noise,
    tail // noise that decays through the subnormal numbers into silence
};

struct StereoSignal
{
    std::vector<float> left, right;

    explicit StereoSignal(Signal kind)
    {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> uniform(-1.0, 1.0);
        for (int i = 0; i < signalFrames; ++i)
        {
            // From 1e-36 to 1e-46: the smallest normal number is 1.2e-38, the smallest of all 1.4e-45.
            const double level =
                kind == Signal::noise ? 1.0 : 1e-36 * std::pow(10.0, -10.0 * i / signalFrames);
            left.push_back(float(level * uniform(random)));
            right.push_back(float(level * uniform(random)));
        }
    }
};
}
