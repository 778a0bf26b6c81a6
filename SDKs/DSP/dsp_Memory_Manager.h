// SPDX-License-Identifier: GPL-3.0-or-later
// Blocks of aligned memory that live until the manager ends: for tables that a whole process shares.
//
// Channel buffers come from dsp_Memory.h instead.
#pragma once

#include <cstddef>
#include <vector>

namespace DSP::MEMORY
{
// Memory aligned to a cache line, or null; to be freed by aligned_free.
void* aligned_malloc(size_t bytes);
void aligned_free(void* memory);

struct CMemoryBlock
{
    void* memory;
    size_t bytes;
};

// [window thread]
class CMemoryManager
{
public:
    CMemoryManager() = default;
    CMemoryManager(const CMemoryManager&) = delete;
    CMemoryManager& operator=(const CMemoryManager&) = delete;
    ~CMemoryManager();

    // A block that the manager owns; null where there is no memory.
    void* allocate(size_t bytes);

private:
    std::vector<CMemoryBlock> blocks;
};

// The manager of this process.
CMemoryManager& getMemoryManager();
}
