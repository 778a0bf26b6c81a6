// SPDX-License-Identifier: GPL-3.0-or-later
// The delay that gives the ducker its look-ahead: both channels of a bus, late by a length that may
// change at any time.
//
// The line is linear, the oldest sample first, and not a ring: a block is delayed by at most three
// contiguous copies, in the bus's own memory. A shorter length takes effect at once on whatever lies in
// the line, and a length that the line never had room for begins with silence.
#pragma once

#include "CORE/Relaxed.h"
#include "Orbel/contract/AudioStereoBus.h"
#include "Orbel/contract/CNChannelBuffer.h"

#include <atomic>

class StereoDelayLine
{
public:
    // [audio stopped] The longest length to come and the largest block, in samples. What lies in the line
    // stays.
    void reserve(long longestDelay, long largestBlock);
    // [any thread] A length that is about to be set. Beyond all that were announced before, the line begins
    // with silence.
    void announceLength(int samples);
    // [audio thread] In samples, 0 to the longest.
    void setLength(int samples) { length = samples; }
    int getLength() const { return length; }
    // [audio stopped] Silence.
    void clear();

    // [audio thread] Delays the first frames samples of the bus in place. Blocks above the largest are
    // worked in pieces.
    void process(Orbel::AudioStereoBus& bus, long frames);

private:
    void processPiece(float* channel, float* delayed, long delay, long frames);

    Orbel::AudioStereoBus line;
    Orbel::CNChannelBuffer scratch; // one channel, of the longest piece
    int length = 0;
    std::atomic<int> extent = 0;                // the longest that was announced, and a margin
    Core::Relaxed<bool> silencePending = false; // a longer line starts with silence
};
