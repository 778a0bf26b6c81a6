// A staging buffer for any count of channels. It has a lock for those who share one, and takes it
// nowhere itself.
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

    // [audio stopped] Zeroed channels of the given length in samples; what was there is lost. A lack of
    // memory leaves the buffer empty.
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
