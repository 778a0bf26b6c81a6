// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a block of resources, and as the index and the records within one, in both forms: every way to
// fetch a resource finds the same.
#include "CORE/ForeignData.h"
#include "Orbel/storage/Packing.h"
#include "Orbel/storage/ResourceStore.h"
#include "Require.h"

namespace
{
constexpr const char* names[] = {"initPreset", "a", ""};

void tryBlock(const std::string& block)
{
    SetResourcePtr(block.data(), long(block.size()));
    for (const char* name : names)
    {
        const auto found = Orbel::readResource(block.data(), block.size(), name);
        unsigned long size = 1;
        char* const bound = GetResource(name, size);
        require((bound != nullptr) == found.has_value(), "both ways find it or neither");
        require(bound ? std::string_view(bound, size) == *found : size == 0, "both ways find the same");
        require(!found || found->size() <= Core::kLargestForeignSize, "nothing is larger than the limit");
        closeResource(bound);
    }
    FreeResources();
}

std::string words(std::initializer_list<size_t> numbers)
{
    std::string bytes(4 * numbers.size(), '\0');
    char* to = bytes.data();
    for (const size_t number : numbers)
    {
        Core::writeLittle32(to, std::uint32_t(number));
        to += 4;
    }
    return bytes;
}

// An index of one entry, and the payload, in a block of the current form that is right.
std::string asCurrentForm(const std::string& bytes)
{
    constexpr size_t entrySize = 268;
    const std::string entry = bytes.substr(0, entrySize), payload = bytes.substr(entry.size());
    const std::string index = Orbel::pack(entry, entrySize + 100).value();
    return std::string("RESOURCE2\0\0\0", 12) + words({20, 8192, payload.size(), 20 + index.size()}) +
           words({entry.size(), index.size(), entry.size() / entrySize}) + index + payload;
}

std::string asOlderForm(std::string records)
{
    const std::string header = words({32, 0x1000, 0, records.size(), records.size()});
    Orbel::fold(records);
    Orbel::scramble(records);
    return std::string("resource\0\0\0\0", 12) + header + records;
}
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    tryBlock(bytes);
    tryBlock(asCurrentForm(bytes));
    tryBlock(asOlderForm(bytes));
    return 0;
}
