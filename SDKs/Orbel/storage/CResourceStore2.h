// SPDX-License-Identifier: GPL-3.0-or-later
// Resources by name from a block of the current form, "RESOURCE2".
#pragma once

#include "Orbel/storage/Diagnosis.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The block is not copied: it has to outlive the store.
// [any thread but audio]  One thread at a time; read may be called by several.
class CResourceStore2
{
public:
    // A block that is damaged ahead of its resources gives a store without any.
    CResourceStore2(const char* block, long size);
    // What the reader found wrong with the block, or else with the first resource that is cut off.
    const Orbel::Diagnosis& getDiagnosis() const { return diagnosis; }

    std::optional<std::string> read(const char* name) const;

    // A new copy at each call, for freeResource; what is not freed goes with the store. Null, with a size
    // of 0, if there is no such resource.
    char* getResource(const char* name, unsigned long& size);
    // Anything but such a copy is ignored.
    void freeResource(const char* pointer);

private:
    struct Entry
    {
        std::string name;
        std::uint32_t rawSize;
        std::int32_t storedSize; // above 0: a zlib stream of that many bytes; else scrambled
        std::uint32_t offset;    // in the payload

        bool isPacked() const { return storedSize > 0; }
        std::uint64_t storedLength() const { return isPacked() ? std::uint64_t(storedSize) : rawSize; }
    };

    Orbel::Diagnosis readBlock(std::string_view block);
    Orbel::Diagnosis readEntries(std::string_view index, std::uint64_t count);
    Orbel::Diagnosis checkEntry(const Entry& entry) const;
    const Entry* findEntry(std::string_view name) const;

    std::vector<Entry> entries;
    std::string_view payload;
    std::vector<std::unique_ptr<std::string>> handedOut;
    Orbel::Diagnosis diagnosis;
};
