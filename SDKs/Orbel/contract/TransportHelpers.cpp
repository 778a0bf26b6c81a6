// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/TransportHelpers.h"

#include "CORE/Truncate.h"

#include <algorithm>
#include <cmath>

namespace Orbel::Helpers
{
long getSamplesToNextBeat(double tempo, double ppqPosition, double sampleRate)
{
    const double usedTempo = std::max(tempo, 10.0);
    const long beat = Core::truncate<int>(60.0 / usedTempo * sampleRate);
    if (beat == 0)
        return 0;
    const long position = Core::truncate<long>(ppqPosition * double(beat));
    return std::max(beat - position % beat, 0L);
}

static double beats(eBeatResolution resolution)
{
    constexpr double table[] = {4.0, 2.0, 1.0, 0.5, 0.25, 0.125};
    return table[std::clamp<int>(resolution, wholeNote, thirtySecondNote)];
}

long getSamplesToNexBeat(double samplePosition, double tempo, double sampleRate, eBeatResolution resolution)
{
    const double line = 60.0 / tempo * sampleRate * beats(resolution);
    const double lines = samplePosition / line;
    const double fraction = lines > 0.0 ? lines - std::floor(lines) : lines + std::ceil(lines);
    const double distance = (1.0 - fraction) * line;
    return distance == line ? 0 : Core::truncate<long>(distance);
}
}
