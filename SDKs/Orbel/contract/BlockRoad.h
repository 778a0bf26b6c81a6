// SPDX-License-Identifier: GPL-3.0-or-later
// The road of one host call through the effect, the same for every host format.
//
// [audio thread]  An adapter makes one on its stack in the first line of each call that may bring audio or
// timed values, so that it lasts until the end of the call. The calling thread is then the effect's audio
// thread: what it adds with addSyncParameterSetEvent goes straight into the block. Nothing here allocates.
//
//     BlockRoad road(*effect, rules);
//     ...                                the host's parameter changes and MIDI events
//     road.process(block, sampleRate);   or road.flush(), where the call brings no audio
#pragma once

#include "CORE/ThreadCheck.h"
#include "Orbel/contract/AudioBusInformation.h"

namespace Orbel
{
class OrbelOS;

// What a host format does differently on the road.
struct BlockRules
{
    // Where the effect desires pieces of a certain size.
    enum LongestPiece
    {
        atMostDesired,         // no piece is longer
        wholeBelowTwiceDesired // a block that is shorter than two of them stays whole
    } longestPiece;

    // What becomes of values that were added for the block.
    enum ValueTiming
    {
        cutTheBlock, // each is written at its sample, where a new piece begins
        cutOnAGrid,  // the same if the automation's grid is on; if it is off, the adapter has written them
        notUsed      // the adapter adds none
    } timedValues;

    // How the position moves by a piece. The results can differ in the last bit, which can decide on which of
    // two samples a trigger falls: so each caller stays with its own.
    enum BeatStep
    {
        product, // frames x (1 / samples per beat)
        quotient // frames / samples per beat
    } beatStep;
};

// What an adapter does at the seams of a block besides. [audio thread]
class BlockObserver
{
public:
    // Values that were added for the block are about to be written to their properties, and have been.
    virtual void timedValuesBegin() {}
    virtual void timedValuesEnd() {}
    // The effect has processed a piece of so many samples; the buses still point at its start.
    virtual void pieceProcessed(int /*frames*/) {}

protected:
    ~BlockObserver() = default;
};

class BlockRoad
{
public:
    // The observer may be null. Neither it nor the effect is owned.
    BlockRoad(OrbelOS& effect, BlockRules rules, BlockObserver* observer = nullptr);

    // Takes a block of numSamples samples through the effect, piece by piece. Buses, time and numSamples of
    // block are then no longer those of its start. sampleRate, in hertz, is that of the host's clock. Values
    // that are not due before the end are dropped.
    void process(AudioBusInformation& block, double sampleRate);
    // A call without audio: writes all added values at once. No time passes.
    void flush();

private:
    int longestPiece(int frames) const;
    double beatsIn(int frames, double samplesPerBeat) const;
    void writeTimedValues(int& frames);

    OrbelOS& effect;
    const BlockRules rules;
    BlockObserver* const observer;
    const Core::AudioSection::Stay stay;
};
}
