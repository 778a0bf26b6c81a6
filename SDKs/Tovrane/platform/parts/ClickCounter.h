// SPDX-License-Identifier: GPL-3.0-or-later
// How many clicks in a row a press makes.
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

    // time in milliseconds, as the server has it, which runs over every 49 days. From 1.
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
