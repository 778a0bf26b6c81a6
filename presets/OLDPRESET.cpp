// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/OLDPRESET.h"

#include "CORE/ForeignData.h"
#include "CORE/Numbers.h"
#include "CORE/Utf8.h"
#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/storage/CPresetStore.h"
#include "effect/parameters/DKS.h"
#include "presets/AProgram.h"
#include "presets/CPresetConverterCallback.h"
#include "presets/OlderChunks.h"
#include "presets/StateLayout.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <optional>
#include <string>

namespace OLDPRESET
{
namespace
{
using Orbel::damaged;
using Orbel::Diagnosis;
using Orbel::refused;

constexpr float tempoOfNoRecord = 10.0f;

std::string_view viewOf(const char* data, long size)
{
    return data && size > 0 ? std::string_view(data, size_t(size)) : std::string_view();
}

// 64 bits each, so that no sum or product of them wraps.
std::uint64_t word(std::string_view bytes, size_t at)
{
    return Core::readBig32(bytes.data() + at);
}

float readFloat(const char* from)
{
    return std::bit_cast<float>(Core::readBig32(from));
}

// A text that ends with its field at the latest. One that fills the field may have lost a part of its last
// character.
std::string text(std::string_view bytes, size_t at, size_t fieldSize)
{
    const std::string_view found(bytes.data() + at, strnlen(bytes.data() + at, fieldSize));
    return std::string(found.size() < fieldSize ? found : Core::Utf8::withoutHalfCharacter(found));
}

// The older product's parameters, and the store that comes of them. One serves for all presets of a bank.
class ConvertedPreset
{
public:
    ConvertedPreset()
    {
        for (const Orbel::ParameterPropertySetup& row : DKS::ps_plain)
            parameters.CreateProperty(&row);
    }

    // As new: the values at creation, which are not all defaults.
    void clear()
    {
        for (int i = 0; i < DKS::kNumParameters; ++i)
            parameters.getProperty(i)->setValue(DKS::ps_plain[i].value);
        name.reset();
        tempo = tempoOfNoRecord;
    }

    void setName(const std::string& newName) { name = newName; }

    // As many as are there. Of the last one only the fields have to be there, not the rest of its size.
    void takeRecords(std::string_view records, std::uint64_t count, std::uint64_t recordSize)
    {
        if (recordSize < record::size || records.size() < record::size)
            return;
        const std::uint64_t present = (records.size() - record::size) / recordSize + 1;
        for (std::uint64_t i = 0; i < std::min(count, present); ++i)
            takeRecord(records.substr(i * recordSize, record::size));
    }

    void handOver(CPresetConverterCallback* callback)
    {
        Orbel::CPresetStore store;
        store.setPresetID(StateLayout::presetID);
        if (name)
            store.setPresetName(name->c_str());
        store.addString(StateLayout::tempoChunk, Core::formatFixed(tempo, 5));
        char* data = nullptr;
        if (const unsigned long size = parameters.getChunk(&data))
            store.addChunk(StateLayout::parameterChunk, data, long(size));
        const long size = store.getPreset(&data);
        if (size > 0 && callback)
            callback->setDataChunk(data, size);
    }

private:
    void takeRecord(std::string_view from)
    {
        const std::string id = text(from, record::id, record::idSize);
        Orbel::ParameterProperty* property = parameters.getProperty(id.c_str());
        if (!property)
            return;
        property->setValue(readFloat(from.data() + record::value));
        const float stored = readFloat(from.data() + record::tempo);
        if (!std::isnan(stored))
            tempo = stored;
    }

    Orbel::CPropertyManager parameters;
    std::optional<std::string> name; // without one, the store has no name; with an empty one, it is "NoName"
    float tempo = tempoOfNoRecord;   // of the last known record
};

// The parts of one size that follow a header, as the header declares them.
struct Parts
{
    const char* what; // for messages
    size_t start;
    std::uint64_t count, size;
    size_t leastSize;

    // How many of them are wholly there.
    std::uint64_t present(size_t bytes) const
    {
        return size < leastSize ? 0 : std::min(count, (bytes - start) / size);
    }

    Diagnosis diagnose(size_t bytes) const
    {
        const std::string its = std::string("its ") + what;
        if (count > 0 && size < leastSize)
            return damaged(start, its + " have " + std::to_string(size) + " bytes each, and need " +
                                      std::to_string(leastSize));
        if (count > 0 && present(bytes) < count)
            return damaged(bytes, its + " are cut off after " + std::to_string(present(bytes)) + " of " +
                                      std::to_string(count));
        return {};
    }
};

Diagnosis unread(const Parts& parts, size_t keyBlock)
{
    return damaged(keyBlock, std::string("its ") + parts.what + " are enciphered, and stay unread");
}

void takeEntry(ConvertedPreset& preset, std::string_view from)
{
    if (word(from, entry::version) < kFirstVersion)
        return;
    preset.setName(text(from, entry::name, entry::nameSize));
    preset.takeRecords(from.substr(entry::records), word(from, entry::recordCount),
                       word(from, entry::recordSize));
}
}

bool isOldBank(const char* data, long size)
{
    return viewOf(data, size).starts_with(bank::id);
}

bool isOldPreset(const char* data, long size)
{
    return viewOf(data, size).starts_with(chunk::id);
}

bool isOldPresetOrBank(const char* data, long size)
{
    return data && (isRawForm(size) || isOldBank(data, size) || isOldPreset(data, size));
}

Diagnosis convertPresetChunk_v2(const char* data, long size, CPresetConverterCallback* callback)
{
    const std::string_view bytes = viewOf(data, size);
    if (bytes.size() < chunk::records)
        return refused(bytes.size(), Orbel::cutOff(bytes.size(), chunk::records) + " of its header");
    const Parts values{.what = "values",
                       .start = chunk::records,
                       .count = word(bytes, chunk::recordCount),
                       .size = word(bytes, chunk::recordSize),
                       .leastSize = record::size};
    const bool enciphered = word(bytes, chunk::keyBlock) != 0;
    ConvertedPreset preset;
    if (word(bytes, chunk::version) >= kFirstVersion)
    {
        preset.setName(text(bytes, chunk::name, chunk::nameSize));
        if (!enciphered)
            preset.takeRecords(bytes.substr(chunk::records), values.count, values.size);
    }
    preset.handOver(callback);
    return enciphered ? unread(values, chunk::keyBlock) : values.diagnose(bytes.size());
}

Diagnosis convertBankChunk_v2(const char* data, long size, CPresetConverterCallback* callback)
{
    const std::string_view bytes = viewOf(data, size);
    if (!callback)
        return {};
    if (bytes.size() < bank::entries)
        return refused(bytes.size(), Orbel::cutOff(bytes.size(), bank::entries) + " of its header");
    const Parts presets{.what = "presets",
                        .start = bank::entries,
                        .count = word(bytes, bank::count),
                        .size = word(bytes, bank::stride),
                        .leastSize = entry::records};
    const bool hasKey = word(bytes, bank::keyBlock) != 0;
    const bool enciphered = hasKey && word(bytes, bank::version) >= kFirstVersion;

    ConvertedPreset preset;
    for (std::uint64_t i = 0; i < std::min(presets.present(bytes.size()), std::uint64_t(kMostPresets)); ++i)
    {
        preset.clear();
        if (!enciphered)
            takeEntry(preset, bytes.substr(bank::entries + i * presets.size, presets.size));
        callback->setProgram(int(i));
        preset.handOver(callback);
    }
    if (hasKey && !enciphered)
        return damaged(bank::keyBlock, "it has a key, and its presets are read as plain for its version");
    return enciphered ? unread(presets, bank::keyBlock) : presets.diagnose(bytes.size());
}
}
