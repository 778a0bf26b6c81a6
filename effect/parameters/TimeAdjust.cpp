// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/parameters/TimeAdjust.h"

#include <cmath>

// clang-format off
const float gTimeAdjustMultiplier[gNumTimeAdjustEntries] = {
    0.25f,       0.5f,        1.0f,        2.0f,        4.0f,
    1.0f / 6.0f, 1.0f / 3.0f, 2.0f / 3.0f, 4.0f / 3.0f, 8.0f / 3.0f,
    0.375f,      0.75f,       1.5f,        3.0f,        6.0f};

const char* const gTimeAdjustText[gNumTimeAdjustEntries] = {
    "1/16",  "1/8",  "1/4",  "1/2",  "1 Bar",
    "1/16T", "1/8T", "1/4T", "1/2T", "1 Bar T",
    "1/16D", "1/8D", "1/4D", "1/2D", "1 Bar D"};
// clang-format on

bool isTimeBase(float beats)
{
    return beats > 0.0f && std::isfinite(beats);
}
