// Distances to the next beat, from a host's position. [any thread]
#pragma once

namespace Orbel::Helpers
{
// A part or multiple of a beat, a quarter note.
enum eBeatResolution : int
{
    wholeNote = 0,
    halfNote = 1,
    quarterNote = 2,
    eighthNote = 3,
    sixteenthNote = 4,
    thirtySecondNote = 5
};

// Samples from a position in quarter notes to the next beat: one whole beat where the position is a
// beat. The tempo, in beats a minute, is raised to 10.
long getSamplesToNextBeat(double tempo, double ppqPosition, double sampleRate);

// Samples from a position in samples to the next line of a grid; 0 where the position is a line.
long getSamplesToNexBeat(double samplePosition, double tempo, double sampleRate, eBeatResolution resolution);
}
