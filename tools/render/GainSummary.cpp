// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/GainSummary.h"

#include "CORE/Numbers.h"
#include "tools/render/RenderEngine.h"

#include <algorithm>
#include <cmath>

namespace lodex
{
// A fall or rise of less than this, about a tenth of a decibel, is no change of direction.
constexpr float threshold = 0.01f;

void GainSummary::add(const float* record, int count)
{
    for (int i = 0; i < count; ++i)
    {
        const float gain = gainFromRecord(record[i]);
        lowestGain = std::min(lowestGain, gain);
        turn = falling ? std::min(turn, gain) : std::max(turn, gain);
        if (falling ? gain < turn + threshold : gain > turn - threshold)
            continue;
        falling = !falling;
        falls += falling;
        turn = gain;
    }
}

std::string GainSummary::text() const
{
    if (falls == 0)
        return "no ducks";
    const double decibels = 20.0 * std::log10(double(lowestGain));
    const std::string depth = decibels > -100.0 ? Core::formatFixed(decibels, 1) + " dB" : "silence";
    return std::to_string(falls) + (falls == 1 ? " duck, to " : " ducks, the deepest to ") + depth;
}
}
