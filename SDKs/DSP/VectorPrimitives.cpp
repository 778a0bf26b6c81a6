// SPDX-License-Identifier: GPL-3.0-or-later
#include "DSP/VectorPrimitives.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

constexpr size_t cacheLine = 64; // bytes

static size_t bytes(int count)
{
    return count > 0 ? size_t(count) * sizeof(float) : 0;
}

void ippsCopy_32f(const float* source, float* destination, int count)
{
    if (count > 0)
        std::memcpy(destination, source, bytes(count));
}

void ippsMove_32f(const float* source, float* destination, int count)
{
    if (count > 0)
        std::memmove(destination, source, bytes(count));
}

void ippsZero_32f(float* destination, int count)
{
    if (count > 0)
        std::memset(destination, 0, bytes(count));
}

float* ippsMalloc_32f(int count)
{
    if (count <= 0)
        return nullptr;
    const size_t lines = (bytes(count) + cacheLine - 1) / cacheLine;
    return static_cast<float*>(std::aligned_alloc(cacheLine, lines * cacheLine));
}

void ippsFree(void* buffer)
{
    std::free(buffer);
}

void ippsMax_32f(const float* source, int count, float* result)
{
    if (count > 0)
        *result = *std::max_element(source, source + count);
}

void ippsMin_32f(const float* source, int count, float* result)
{
    if (count > 0)
        *result = *std::min_element(source, source + count);
}
