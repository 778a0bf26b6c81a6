// SPDX-License-Identifier: GPL-3.0-or-later
#include "DSP/dsp_Memory_Manager.h"

#include <cstdlib>

namespace DSP::MEMORY
{
constexpr size_t cacheLine = 64; // bytes

void* aligned_malloc(size_t bytes)
{
    return std::aligned_alloc(cacheLine, (bytes + cacheLine - 1) / cacheLine * cacheLine);
}

void aligned_free(void* memory)
{
    std::free(memory);
}

CMemoryManager::~CMemoryManager()
{
    for (const CMemoryBlock& block : blocks)
        aligned_free(block.memory);
}

void* CMemoryManager::allocate(size_t bytes)
{
    void* memory = aligned_malloc(bytes);
    if (memory)
        blocks.push_back({memory, bytes});
    return memory;
}

CMemoryManager& getMemoryManager()
{
    static CMemoryManager manager;
    return manager;
}
}
