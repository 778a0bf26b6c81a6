// SPDX-License-Identifier: GPL-3.0-or-later
// Counts clicks that follow each other closely: double and triple clicks.
#pragma once

#include <cstdint>
#include <cstdlib>

namespace Tovra
{
// [window thread]
class ClickCounter
{
public:
    static constexpr std::uint32_t longestPause = 400; // milliseconds
    static constexpr int farthest = 4;                 // pixels

    // The number of this click in its row, from 1. time is the server's, in milliseconds; it starts again at
    // 0 every 49 days.
    int press(int button, int x, int y, std::uint32_t time)
    {
        const bool goesOn = count > 0 && button == lastButton && time - lastTime <= longestPause &&
                            std::abs(x - lastX) <= farthest && std::abs(y - lastY) <= farthest;
        count = goesOn ? count + 1 : 1;
        lastButton = button;
        lastX = x;
        lastY = y;
        lastTime = time;
        return count;
    }

private:
    int count = 0;
    int lastButton = 0;
    int lastX = 0;
    int lastY = 0;
    std::uint32_t lastTime = 0;
};
}
