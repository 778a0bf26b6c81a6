// SPDX-License-Identifier: GPL-3.0-or-later
// The road of the audio: input, delay, ducker, output, with the buffers in between.
//
//     input -> delay -> CBusSidechainFx -> output
//
// The delay gives the ducker its look-ahead. It serves the bypass as well, so that switching neither moves
// the audio nor loses any of it.
#pragma once

#include "Orbel/contract/AudioBusInformation.h"
#include "effect/engine/CBusSidechainFx.h"
#include "effect/engine/StereoDelayLine.h"

class DuckingPath
{
public:
    // Rates other than this one scale the look-ahead.
    static constexpr float referenceRate = 44100.0f; // hertz

    // [audio stopped] In hertz.
    void setSampleRate(float rate);
    // [audio stopped], or on the audio thread for a block beyond the announced size, where it allocates. In
    // samples.
    void reserve(long frames);
    long capacity() const { return busGainRecord.length; }
    // [audio stopped] Silence; an idle envelope.
    void reset();

    // The look-ahead in samples for a click filter from 0 to 1.
    static int lookAhead(float clickFilter, float sampleRate);
    // [any thread] A look-ahead that is about to be set.
    void announceLookAhead(int samples) { delayLine.announceLength(samples); }
    // [audio thread] The length of the delay and of the ducker's pre-fade, which are one.
    void setLookAhead(int samples);

    // [audio thread] The first input bus to the first output bus, which may share memory. A bus that the host
    // did not connect is silence, or goes nowhere.
    void duck(Orbel::AudioBusInformation& info);
    // The same without the ducker, whose countdowns stand.
    void passThrough(Orbel::AudioBusInformation& info);

    // [audio thread] For each sample of the last block 1 - 2 x gain, -1 where it was passed through. Null
    // before reserve.
    const float* gainRecord() const { return busGainRecord.left; }
    // [audio thread] The last block after the delay, and what went out; a block that was passed through
    // leaves the first one as it was.
    const Orbel::AudioStereoBus& preDuck() const { return busPreDuck; }
    const Orbel::AudioStereoBus& ducked() const { return busOutput; }

    CBusSidechainFx ducker; // its parameters and triggers are set by the owner

private:
    StereoDelayLine delayLine;
    Orbel::AudioStereoBus busPreDuck; // the input after the delay
    Orbel::AudioStereoBus busOutput;  // the result, ducked in place
    Orbel::AudioStereoBus busGainRecord;
};
