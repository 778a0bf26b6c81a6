// SPDX-License-Identifier: GPL-3.0-or-later
// One stereo pair of channel pointers: its own memory, or pointers into somebody else's.
//
// There is no lock: a bus that the audio thread reads is created anew only while audio is stopped.
#pragma once

#include <cstdint>

namespace Orbel
{
class AudioStereoBus
{
public:
    AudioStereoBus() = default;
    AudioStereoBus(const AudioStereoBus&) = delete;
    AudioStereoBus& operator=(const AudioStereoBus&) = delete;
    ~AudioStereoBus();

    enum BufferType : int32_t
    {
        noBuffer = -1,
        externalBuffer = 0,
        ownBuffer = 1
    };

    // [audio stopped] Makes two zeroed channels of the given length in samples; the former content is lost.
    // A length of 0 or below gives null pointers, and so does a lack of memory.
    void createBusWithOwnBuffer(long newLength);
    // [audio thread] Takes the pointers channels[0] and channels[1], which the caller owns. Nothing is copied
    // or allocated.
    void createBusWithExternalBuffer(float** channels, long newLength);

    // [audio thread] Copies so many samples of both channels. An own buffer that is too short is created anew
    // at that length, which allocates; a bus of another kind that is too short throws a const char*.
    void copyFrom(AudioStereoBus* source, long frames);
    void copyFrom(float** source, long frames);

    // [audio thread] Zeroes the first frames samples of both channels, at most the whole length; 0 means
    // the whole length.
    void clear(long frames);
    // [audio thread] Moves both pointers of an external buffer on; an own buffer stays where it is.
    void advanceBuffer(int frames);

    float* left = nullptr;
    float* right = nullptr;
    int32_t length = 0;        // capacity in samples
    int32_t lengthInBytes = 0; // of one channel
    int32_t bufferType = noBuffer;

private:
    void releaseOwnBuffer();
    void setLength(long newLength);
};
}
