// SPDX-License-Identifier: GPL-3.0-or-later
#include "DSP/dsp_Memory.h"

#include "DSP/VectorPrimitives.h"

#include <limits>

namespace DSP::MEMORY
{
void getEmptyBufferFloat(float*& pointer, long samples)
{
    float* fresh = nullptr;
    if (samples > 0 && samples <= std::numeric_limits<int>::max())
        fresh = ippsMalloc_32f(int(samples));
    if (fresh)
        ippsZero_32f(fresh, int(samples));
    freeBuffer(pointer);
    pointer = fresh;
}

void freeBuffer(float* buffer)
{
    if (buffer)
        ippsFree(buffer);
}
}
