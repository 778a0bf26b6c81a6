// SPDX-License-Identifier: GPL-3.0-or-later
// Images of everything that a preset can be in, put together field by field.
#pragma once

#include "CORE/ForeignData.h"
#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/storage/CPresetStore.h"
#include "effect/parameters/DKS_Mini.h"
#include "presets/OlderImages.h"

#include <map>
#include <string>
#include <vector>

namespace images
{
using Values = std::map<std::string, float>; // by parameter id
using Chunks = std::vector<std::pair<std::string, std::string>>;

// A chunk of the given parameters, or of all, the others at their defaults.
inline std::string parameters(const Values& values, bool all = true)
{
    Orbel::CPropertyManager manager;
    for (const auto& row : DKS_Mini::ps_plain)
        if (const auto found = values.find(row.id.c_str()); all || found != values.end())
            manager.CreateProperty(&row)->setValue(found != values.end() ? found->second : row.value);
    char* bytes = nullptr;
    const unsigned long size = manager.getChunk(&bytes);
    return {bytes, size};
}

inline std::string store(const char* id, const std::string& name, const Chunks& chunks)
{
    Orbel::CPresetStore store;
    store.setPresetID(id);
    if (!name.empty())
        store.setPresetName(name.c_str());
    for (const auto& [chunk, content] : chunks)
        store.addChunk(chunk.c_str(), content.data(), long(content.size()));
    char* bytes = nullptr;
    const long size = store.getPreset(&bytes);
    return {bytes, size_t(size)};
}

inline std::string preset(const std::string& name, const Values& values, const std::string& timeBase = "1",
                          const Values& system = {})
{
    Chunks chunks{{"PPDATA", parameters(values)}, {"ENV_TIME_ADJUST", timeBase + '\0'}};
    if (!system.empty())
        chunks.emplace_back("SystemData", parameters(system, false));
    return store("QDT_DKS_PRESET", name, chunks);
}

inline std::string bank(const std::vector<std::string>& presets, const char* current = "1")
{
    Chunks chunks{{"NumPresets", std::to_string(presets.size())}, {"CurrentPreset", current}};
    for (size_t i = 0; i < presets.size(); ++i)
        chunks.emplace_back("PRESET" + std::to_string(i), presets[i]);
    return store("QDT_DKS_BANK", "", chunks);
}

// A program file, or a bank file by its magic and a gap of 128 bytes.
inline std::string file(const std::string& payload, const char* magic = "FPCh", size_t gap = 28)
{
    return "CcnK" + bigWord(0) + magic + bigWord(1) + "QDKC" + bigWord(1) + bigWord(0) +
           std::string(gap, '\0') + bigWord(std::uint32_t(payload.size())) + payload;
}

inline std::string bankFile(const std::string& payload)
{
    return file(payload, "FBCh", 128);
}

inline std::string stream(const std::string& payload)
{
    return littleWord(std::uint32_t(payload.size())) + littleWord(0) + payload;
}

// The older product's forms, with a strength as given.
inline std::string rawProgram(const std::string& name, float strength)
{
    Program program{.name = name};
    program.values[7] = strength;
    return singleForm(program, 0.0f);
}

inline std::string rawBank(float strength)
{
    std::string bytes(8, '\0');
    for (int i = 0; i < 32; ++i)
        bytes += rawProgram("Program", strength).substr(8);
    return padded(bytes, 6728);
}

// A key other than 0 says that the records are enciphered.
inline std::string taggedPreset(std::uint32_t records, float strength, std::uint32_t key = 0)
{
    TaggedPreset preset{.records = "", .count = records, .key = key, .name = "Half"};
    for (std::uint32_t i = 0; i < records; ++i)
        preset.records += record("STRENGTH", strength, 128);
    return preset.bytes();
}

// The store with a field of its header replaced.
inline std::string withField(std::string store, size_t offset, std::uint32_t value)
{
    return store.replace(offset, 4, littleWord(value));
}
}
