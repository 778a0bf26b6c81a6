// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a preset store, and as the records within one: what is taken is inside what was given, can be
// written, and then reads the same.
#include "CORE/ForeignData.h"
#include "Orbel/storage/CPresetStore.h"
#include "Orbel/storage/Packing.h"
#include "Require.h"

#include <cstring>

namespace
{
constexpr const char* names[] = {
    "SINGLEPRESET", "PPDATA", "SystemData", "ENV_TIME_ADJUST", "PRESET0", "A", ""};

std::string chunk(const Orbel::CPresetStore& store, const char* name)
{
    char* data = nullptr;
    const long length = store.getChunk(name, &data);
    require(length >= 0 && (data || length == 0), "a chunk has a place and a length");
    return {data, size_t(length)}; // reads every byte of it
}

void requireSameAfterReload(const Orbel::CPresetStore& store)
{
    Orbel::CPresetStore writer = store, reader;
    writer.addString("ADDED", "%n%s");
    char* bytes = nullptr;
    const long size = writer.getPreset(&bytes);
    require(reader.setPreset(bytes, size) == 0, "what is written is taken");
    require(reader.getChunkCount() >= store.getChunkCount(), "no chunk is lost");
    for (const char* name : names)
        require(chunk(store, name).empty() || chunk(reader, name) == chunk(store, name),
                "chunks read the same");
}

void tryStore(std::string bytes, int depth)
{
    Orbel::CPresetStore store;
    Orbel::UnpackingAllowance allowance;
    const Orbel::Diagnosis found = store.read(bytes, allowance);
    require(found.taken || (store.getChunkCount() == 0 && !found.why.empty()),
            "a refused store is empty, and there is a reason");
    require(std::strlen(store.getPresetName()) <= 40, "a name has 40 characters at most");
    if (found.taken)
        requireSameAfterReload(store);
    if (depth > 0)
        tryStore(chunk(store, "PRESET0"), depth - 1);
}

// The records within a store that is right, so that the fuzzer need not find its way through a stream.
std::string asStore(std::string records)
{
    std::string header(44, '\0');
    std::memcpy(header.data(), "ppst", 4);
    Core::writeLittle32(header.data() + 24, 44);
    Core::writeLittle32(header.data() + 28, 0x1000);
    Core::writeLittle32(header.data() + 36, std::uint32_t(records.size()));
    Core::writeLittle32(header.data() + 40, std::uint32_t(records.size()));
    Orbel::fold(records);
    return header + records;
}
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    tryStore(bytes, 2);
    tryStore(asStore(bytes), 1);
    return 0;
}
