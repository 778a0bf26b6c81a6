// SPDX-License-Identifier: GPL-3.0-or-later
// Distances to the next beat, from a host's position. [any thread]
#pragma once

namespace Orbel::Helpers
{
// A multiple or a part of a beat, which is a quarter note.
enum eBeatResolution : int
{
    wholeNote = 0,
    halfNote = 1,
    quarterNote = 2,
    eighthNote = 3,
    sixteenthNote = 4,
    thirtySecondNote = 5
};

// Samples from a position in quarter notes to the next beat; a whole beat if the position is on one. The
// tempo, in beats a minute, counts as 10 if it is lower.
long getSamplesToNextBeat(double tempo, double ppqPosition, double sampleRate);

// Samples from a position in samples to the next line of a grid; 0 if the position is on one.
long getSamplesToNexBeat(double samplePosition, double tempo, double sampleRate, eBeatResolution resolution);
}
