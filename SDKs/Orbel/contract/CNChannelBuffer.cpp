// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/CNChannelBuffer.h"

#include "DSP/VectorPrimitives.h"
#include "DSP/dsp_Memory.h"

#include <algorithm>

namespace Orbel
{
CNChannelBuffer::~CNChannelBuffer()
{
    release();
}

void CNChannelBuffer::release()
{
    for (unsigned long i = 0; i < numChannels; ++i)
        DSP::MEMORY::freeBuffer(channels[i]);
    delete[] channels;
    channels = nullptr;
    numChannels = numSamples = 0;
}

void CNChannelBuffer::alloc(unsigned long newSamples, unsigned long newChannels)
{
    release();
    channels = new float*[newChannels]();
    numChannels = newChannels;
    numSamples = newSamples;
    for (unsigned long i = 0; i < numChannels; ++i)
    {
        DSP::MEMORY::getEmptyBufferFloat(channels[i], long(newSamples));
        if (!channels[i] && newSamples > 0)
            return release();
    }
}

void CNChannelBuffer::copy_from(float** source, unsigned long count, unsigned long frames)
{
    for (unsigned long i = 0; i < std::min(count, numChannels); ++i)
        ippsCopy_32f(source[i], channels[i], int(std::min(frames, numSamples)));
}

void CNChannelBuffer::copy_to(float** destination, unsigned long count, unsigned long frames) const
{
    for (unsigned long i = 0; i < std::min(count, numChannels); ++i)
        ippsCopy_32f(channels[i], destination[i], int(std::min(frames, numSamples)));
}
}
