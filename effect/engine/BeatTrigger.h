// SPDX-License-Identifier: GPL-3.0-or-later
// When the next trigger falls, by the host's musical position alone.
//
// Triggers stand on a grid of one interval, a note value, from the song's beginning; a shift moves the whole
// grid. Every block of the second half of an interval finds the distance to the next trigger anew, which
// corrects any drift of tempo and position. In the first half there is nothing to find, so that a trigger
// that has just fired does not fire again: a block longer than half an interval may therefore miss one.
//
// A plain value, made for one block. [any thread]
#pragma once

struct BeatTrigger
{
    float sampleRate = 44100.0f;
    float tempo = 120.0f;   // beats a minute
    float noteValue = 1.0f; // the interval in beats
    long shiftSamples = 0;  // earlier if positive

    static constexpr long none = -1;

    // Samples from one trigger to the next.
    double interval() const;
    // Samples from a position in beats to the next trigger, at most half an interval, or none.
    // At or before the song's beginning the trigger is one sample away. A distance is cut to whole samples.
    long samplesToNext(double ppqPosition) const;
};

// The trigger shift, a parameter from -1 to 1 that stands for half a beat, in samples, cut to whole ones. Two
// formulas with the factors in another order, because their results may differ by one sample: the first
// follows a new value of the parameter, the second a new tempo or sample rate.
long shiftSamplesOfParameter(float shift, float tempo, float sampleRate);
long shiftSamplesOfTempo(float shift, float tempo, float sampleRate);
