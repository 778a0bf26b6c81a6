// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/BlockRoad.h"

#include "Orbel/contract/OrbelOS.h"

#include <algorithm>

namespace Orbel
{
BlockRoad::BlockRoad(OrbelOS& driven, BlockRules formatRules, BlockObserver* told)
    : effect(driven), rules(formatRules), observer(told), stay(driven.audioSection, "BlockRoad")
{
    effect.timedValues.claim();
}

void BlockRoad::process(AudioBusInformation& block, double sampleRate)
{
    const int frames = block.numSamples;
    CHostTimeInfo& time = block.timeInfo;
    if (rules.timedValues == BlockRules::notUsed)
        effect.noteBlock(time, frames);
    else
        effect.prepareSyncParameterSet(time, frames);
    const double samplesPerBeat = 60.0 / double(time.tempo) * sampleRate;
    const int longest = longestPiece(frames);
    for (int remaining = frames; remaining > 0;)
    {
        int piece = std::min(longest, remaining);
        writeTimedValues(piece);
        block.numSamples = piece;
        effect.processAudio(block);
        if (observer)
            observer->pieceProcessed(piece);
        block.advanceInput(piece);
        block.advanceOutput(piece);
        time.advance(piece, beatsIn(piece, samplesPerBeat));
        remaining -= piece;
    }
    effect.clearSyncSetEvents();
}

int BlockRoad::longestPiece(int frames) const
{
    const long desired = effect.getDesiredProcessBlockSize();
    const bool staysWhole = rules.longestPiece == BlockRules::wholeBelowTwiceDesired && frames < 2 * desired;
    return desired <= 0 || staysWhole ? frames : int(std::min<long>(desired, frames));
}

double BlockRoad::beatsIn(int frames, double samplesPerBeat) const
{
    return rules.beatStep == BlockRules::product ? frames * (1.0 / samplesPerBeat) : frames / samplesPerBeat;
}

void BlockRoad::writeTimedValues(int& frames)
{
    const bool gridIsOff = effect.getAutomationSyncResoltution() == automationSyncOff;
    if (rules.timedValues == BlockRules::notUsed ||
        (rules.timedValues == BlockRules::cutOnAGrid && gridIsOff))
        return;
    if (observer)
        observer->timedValuesBegin();
    effect.syncSetParameters(frames);
    if (observer)
        observer->timedValuesEnd();
}

void BlockRoad::flush()
{
    CHostTimeInfo noTime;
    int frames = 1;
    effect.prepareSyncParameterSet(noTime, 0);
    effect.syncSetParameters(frames);
    effect.clearSyncSetEvents();
}
}
