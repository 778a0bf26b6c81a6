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
    long timeSignatureNumerator = 0; // 0 where the host doesn't tell
    long timeSignatureDenominator = 0;
};
}
