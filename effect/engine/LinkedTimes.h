// SPDX-License-Identifier: GPL-3.0-or-later
// How linked envelope times give way to one another, so that the shape keeps its place in the beat.
//
// A change of the attack is taken up by the hold, and where the hold meets a bound, by the release; a change
// of the hold is taken up by the release. A change of the release moves nothing. A plain function. [any
// thread]
#pragma once

struct EnvelopeTimes
{
    float attack, hold, release; // milliseconds at 128 beats a minute
};

struct TimeRange
{
    float minimum, maximum;
};

enum class LinkedTime
{
    attack,
    hold
};

// The three times after one of them was set to value; before holds all three as they stood. Where the hold
// meets a bound, the release gives what the hold gave and not what it could not give: saved songs rely on
// that.
EnvelopeTimes linkedTimes(const EnvelopeTimes& before, LinkedTime changed, float value, TimeRange holdRange,
                          TimeRange releaseRange);
