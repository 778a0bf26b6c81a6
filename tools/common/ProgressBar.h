// SPDX-License-Identifier: GPL-3.0-or-later
// How far a long piece of work is, on standard error, if that is a terminal. The line comes only after a
// second of work and is cleared at the end.
#pragma once

#include <chrono>
#include <cstdint>

namespace lodex
{
class ProgressBar
{
public:
    // The whole of the work in any unit; with -1 nothing is shown.
    explicit ProgressBar(int64_t whole);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    void show(int64_t done);

private:
    using Clock = std::chrono::steady_clock;

    int64_t total;
    bool enabled;
    bool visible = false;
    Clock::time_point nextTime; // of drawing
};
}
