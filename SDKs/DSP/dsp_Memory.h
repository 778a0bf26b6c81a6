// SPDX-License-Identifier: GPL-3.0-or-later
// The allocator of all channel buffers. [audio stopped], or any thread that may allocate.
#pragma once

namespace DSP::MEMORY
{
// Replaces pointer by a zeroed buffer of so many samples, or by null if their number is 0 or below or there
// is no memory. The former buffer is freed.
void getEmptyBufferFloat(float*& pointer, long samples);

// Frees a buffer of getEmptyBufferFloat; null is allowed.
void freeBuffer(float* buffer);
}
