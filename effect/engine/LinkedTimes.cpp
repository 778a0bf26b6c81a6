// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/LinkedTimes.h"

#include <algorithm>

namespace
{
// The minimum counts only where the capped value lies below it.
float clampedTo(TimeRange range, float value)
{
    const float capped = std::min(value, range.maximum);
    return capped < range.minimum ? range.minimum : capped;
}

float shortened(float release, float by, TimeRange range)
{
    return clampedTo(range, by == 0.0f ? release : release - by);
}
}

EnvelopeTimes linkedTimes(const EnvelopeTimes& before, LinkedTime changed, float value, TimeRange holdRange,
                          TimeRange releaseRange)
{
    if (changed == LinkedTime::hold)
        return {before.attack, value, shortened(before.release, value - before.hold, releaseRange)};

    const float gained = value - before.attack;
    const float wanted = before.hold - gained;
    float given = 0.0f;
    if (wanted < holdRange.minimum)
        given = gained - holdRange.minimum + wanted;
    else if (wanted > holdRange.maximum)
        given = gained - holdRange.maximum + wanted;
    const float hold = wanted < holdRange.minimum ? holdRange.minimum : std::min(holdRange.maximum, wanted);
    return {value, hold, shortened(before.release, given, releaseRange)};
}
