// SPDX-License-Identifier: GPL-3.0-or-later
// What a host tells of its transport for one block.
#pragma once

namespace Orbel
{
struct CHostTimeInfo
{
    double samplePosition = 0.0;   // start of the block, in samples
    double ppqPosition = 0.0;      // start of the block, in quarter notes
    double barStartPosition = 0.0; // start of the present bar, in quarter notes
    float tempo = 0.0f;            // beats a minute
    long samplesToNextBeat = 0;    // see Helpers::getSamplesToNextBeat
    bool transportChanged = false;
    bool playing = false;
    bool cycleActive = false;
    bool recording = false;
    bool automationWriting = false;
    bool automationReading = false;
    long timeSignatureNumerator = 0; // 0 where the host does not tell it
    long timeSignatureDenominator = 0;

    // [audio thread]  On to the next piece of the block: so many samples and so many quarter notes further.
    // The count down to the next beat goes on below 0.
    void advance(int samples, double quarterNotes)
    {
        samplePosition += samples;
        ppqPosition += quarterNotes;
        samplesToNextBeat -= samples;
    }
};
}
