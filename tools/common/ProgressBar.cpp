// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/common/ProgressBar.h"

#include <cstdio>
#include <string>
#include <unistd.h>

namespace lodex
{
ProgressBar::ProgressBar(int64_t whole)
    : total(whole),
      enabled(whole > 0 && isatty(STDERR_FILENO)),
      nextTime(Clock::now() + std::chrono::seconds(1))
{
}

ProgressBar::~ProgressBar()
{
    if (visible)
        std::fputs("\r\x1b[K", stderr);
}

void ProgressBar::show(int64_t done)
{
    if (!enabled || Clock::now() < nextTime)
        return;
    constexpr int width = 40;
    const double share = double(done) / double(total);
    const size_t filled = size_t(share * width);
    const std::string bar = std::string(filled, '#') + std::string(width - filled, '.');
    std::fprintf(stderr, "\r[%s] %3d %%", bar.c_str(), int(share * 100.0));
    std::fflush(stderr);
    visible = true;
    nextTime = Clock::now() + std::chrono::milliseconds(100);
}
}
