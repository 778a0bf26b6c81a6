// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/AudioStereoBus.h"

#include "DSP/VectorPrimitives.h"
#include "DSP/dsp_Memory.h"

#include <algorithm>
#include <limits>

namespace Orbel
{
AudioStereoBus::~AudioStereoBus()
{
    releaseOwnBuffer();
}

void AudioStereoBus::releaseOwnBuffer()
{
    if (bufferType == ownBuffer)
    {
        DSP::MEMORY::freeBuffer(left);
        DSP::MEMORY::freeBuffer(right);
    }
    left = right = nullptr;
    setLength(0);
    bufferType = noBuffer;
}

void AudioStereoBus::setLength(long newLength)
{
    const long most = std::numeric_limits<int32_t>::max() / long(sizeof(float));
    length = int32_t(std::clamp(newLength, 0L, most));
    lengthInBytes = length * int32_t(sizeof(float));
}

void AudioStereoBus::createBusWithOwnBuffer(long newLength)
{
    releaseOwnBuffer();
    setLength(newLength);
    DSP::MEMORY::getEmptyBufferFloat(left, length);
    DSP::MEMORY::getEmptyBufferFloat(right, length);
    bufferType = ownBuffer;
    if (length > 0 && (!left || !right))
        createBusWithOwnBuffer(0);
}

void AudioStereoBus::createBusWithExternalBuffer(float** channels, long newLength)
{
    releaseOwnBuffer();
    left = channels[0];
    right = channels[1];
    setLength(newLength);
    bufferType = externalBuffer;
}

void AudioStereoBus::copyFrom(AudioStereoBus* source, long frames)
{
    float* channels[] = {source->left, source->right};
    copyFrom(channels, frames);
}

void AudioStereoBus::copyFrom(float** source, long frames)
{
    if (frames > length)
    {
        if (bufferType != ownBuffer)
            throw "AudioStereoBus::copyFrom( float**, long): DST < SRC\n";
        createBusWithOwnBuffer(frames);
        frames = std::min<long>(frames, length);
    }
    ippsCopy_32f(source[0], left, int(frames));
    ippsCopy_32f(source[1], right, int(frames));
}

void AudioStereoBus::clear(long frames)
{
    const int count = int(frames == 0 ? length : std::min<long>(frames, length));
    ippsZero_32f(left, count);
    ippsZero_32f(right, count);
}

void AudioStereoBus::advanceBuffer(int frames)
{
    if (bufferType != externalBuffer)
        return;
    if (left)
        left += frames;
    if (right)
        right += frames;
}
}
