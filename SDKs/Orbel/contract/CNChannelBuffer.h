// SPDX-License-Identifier: GPL-3.0-or-later
// A staging buffer for any number of channels. Its lock is there for callers that share one: no operation of
// its own takes it.
#pragma once

#include "CORE/CriticalSection.h"

namespace Orbel
{
class CNChannelBuffer
{
public:
    CNChannelBuffer() = default;
    CNChannelBuffer(const CNChannelBuffer&) = delete;
    CNChannelBuffer& operator=(const CNChannelBuffer&) = delete;
    virtual ~CNChannelBuffer();

    // [audio stopped] Makes zeroed channels of the given length in samples; the former content is lost. A
    // lack of memory leaves the buffer without channels.
    void alloc(unsigned long newSamples, unsigned long newChannels);

    // [audio thread] Copy min(count, numChannels) channels of min(frames, numSamples) samples.
    void copy_from(float** source, unsigned long count, unsigned long frames);
    void copy_to(float** destination, unsigned long count, unsigned long frames) const;

    float** channels = nullptr;
    unsigned long numChannels = 0;
    unsigned long numSamples = 0;
    Core::Threads::CriticalSection section;

private:
    void release();
};
}
