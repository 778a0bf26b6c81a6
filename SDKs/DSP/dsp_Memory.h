// The allocator under every channel buffer. [audio stopped] or a thread that may allocate.
#pragma once

namespace DSP::MEMORY
{
// Replaces pointer by a zeroed buffer of the given count of samples, or by null for a count of 0 or
// below, and frees what pointer held before. Null where there is no memory.
void getEmptyBufferFloat(float*& pointer, long samples);

// Frees a buffer of getEmptyBufferFloat; null is allowed.
void freeBuffer(float* buffer);
}
