// SPDX-License-Identifier: GPL-3.0-or-later
// "lodex bench": what one instance of the effect costs, beside a plain copy of the same audio.
#pragma once

namespace CLI
{
class App;
}

namespace lodex
{
struct BenchResult
{
    double effect; // nanoseconds a stereo frame
    double copy;
};

// Takes well under a minute. Blocks of 256 frames of noise at 44.1 kHz and 120 beats a minute.
BenchResult measureEffect();

void addBenchCommand(CLI::App& app);
}
