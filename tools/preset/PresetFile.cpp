// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/preset/PresetFile.h"

#include "presets/AProgram.h"
#include "presets/CPresetConverter_V2.h"
#include "presets/SavedBank.h"
#include "presets/SavedState.h"
#include "presets/StateLayout.h"
#include "tools/common/InputFile.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <climits>

namespace lodex
{
namespace
{
constexpr std::uint64_t mostUnpacked = 16u << 20; // bytes: thousands of presets

bool isOlderForm(std::string_view bytes)
{
    return OLDPRESET::isOldPresetOrBank(bytes.data(), long(bytes.size()));
}

bool isOlderBank(std::string_view bytes)
{
    const auto size = long(bytes.size());
    return OLDPRESET::isRawForm(size) ? size != OLDPRESET::kSingleProgramSize
                                      : OLDPRESET::isOldBank(bytes.data(), size);
}

// A store that unpacks to too much is not given to the effect, which is less strict.
StoredPreset examinePreset(std::string_view data, Orbel::UnpackingAllowance& allowance)
{
    const int formerRefusals = allowance.getRefusalCount();
    Orbel::CPresetStore store;
    SavedState state;
    const Orbel::Diagnosis found = state.read(store, data, allowance);
    const bool isUsable = found.taken && state.isKnown() && allowance.getRefusalCount() == formerRefusals;
    return {isUsable ? std::string(data) : "", printable(found.why)};
}

void readOlderForm(PresetFile& file, std::string_view bytes)
{
    file.isOlder = true;
    file.isBank = isOlderBank(bytes);
    CPresetConverter_V2 converter;
    file.problem = converter.convert(bytes.data(), long(bytes.size())).why;
    for (int i = 0; i < std::min(converter.getNumPresets(), mostPresets); ++i)
    {
        char* chunk = nullptr;
        const long size = converter.getChunkForPreset(i, &chunk);
        Orbel::UnpackingAllowance allowance; // these are our own, and small
        file.presets.push_back(examinePreset({chunk, size_t(size)}, allowance));
    }
    file.current = converter.getCurrentPresetIndex();
}

StoredPreset examinePresetOfBank(std::string_view chunk, Orbel::UnpackingAllowance& allowance)
{
    if (!chunk.data())
        return {"", "it is missing"};
    if (isOlderForm(chunk))
        return {"", "it is of an older form, which a bank cannot hold"};
    return examinePreset(chunk, allowance);
}

void readPresetsOfBank(PresetFile& file, const SavedBank& bank)
{
    const auto declared = bank.getDeclaredCount();
    const long count = declared.value_or(mostPresets);
    int end = 0; // after the last that is there
    for (int i = 0; i < std::min<long>(count, mostPresets); ++i)
        if (bank.getPreset(i).data())
            end = i + 1;
    Orbel::UnpackingAllowance allowance(mostUnpacked);
    for (int i = 0; i < end; ++i)
        file.presets.push_back(examinePresetOfBank(bank.getPreset(i), allowance));

    if (file.problem.empty() && !declared)
        file.problem = "it does not tell how many presets it holds";
    if (file.problem.empty() && end < count)
        file.problem = "it holds " + std::to_string(end) + " of " + std::to_string(count) + " presets";
}

void readBank(PresetFile& file, std::string_view bytes)
{
    SavedBank bank;
    Orbel::UnpackingAllowance allowance(mostUnpacked);
    const Orbel::Diagnosis found = bank.read(bytes, allowance);
    if (!found.taken)
        throw ToolError(printable(found.why));
    file.isBank = true;
    file.problem = printable(found.why);
    file.current = int(std::clamp<long>(bank.getCurrent(), INT_MIN, INT_MAX));
    file.systemSettings = bank.getSystemSettings();
    readPresetsOfBank(file, bank);
}

void readPayload(PresetFile& file, std::string_view bytes)
{
    if (isOlderForm(bytes))
        return readOlderForm(file, bytes);
    if (StateLayout::beginsWithID(bytes, StateLayout::bankID))
        return readBank(file, bytes);
    if (!StateLayout::beginsWithID(bytes, StateLayout::presetID))
        throw ToolError("it is in none of the forms that a preset can have");
    Orbel::UnpackingAllowance allowance(mostUnpacked);
    file.presets.push_back(examinePreset(bytes, allowance));
}

std::string problemOfPresets(const PresetFile& file)
{
    for (size_t i = 0; i < file.presets.size(); ++i)
        if (const std::string& problem = file.presets[i].problem; !problem.empty())
            return (file.isBank ? "preset " + std::to_string(i) + ": " : "") + problem;
    return {};
}

void requireSomethingUsable(const PresetFile& file)
{
    for (const StoredPreset& preset : file.presets)
        if (!preset.chunk.empty())
            return;
    for (const std::string& reason : {problemOfPresets(file), file.problem})
        if (!reason.empty())
            throw ToolError(reason);
    throw ToolError("it holds no preset");
}
}

std::vector<std::string> PresetFile::chunks(size_t index, PresetType taken) const
{
    std::vector<std::string> result{presets[index].chunk};
    if (!isRecalledAsBank(taken))
        return result;
    std::string bank = SavedBank::bytes({result[0]}, systemSettings);
    if (OLDPRESET::isRawForm(long(bank.size())))
        bank += '\0'; // a raw size would count for the effect
    result.push_back(std::move(bank));
    return result;
}

PresetFile parsePresetFile(std::string bytes)
{
    const PresetPayload payload = unwrapPreset(std::move(bytes));
    PresetFile file;
    file.type = payload.type;
    try
    {
        readPayload(file, payload.bytes);
        requireSomethingUsable(file);
    }
    catch (const ToolError&)
    {
        if (payload.problem.empty())
            throw;
        throw ToolError(payload.problem);
    }
    if (!payload.problem.empty())
        file.problem = payload.problem;
    if (file.problem.empty())
        file.problem = problemOfPresets(file);
    return file;
}

PresetFile readPresetFile(const std::string& path)
{
    try
    {
        return parsePresetFile(readInputFile(path));
    }
    catch (const ToolError& reason)
    {
        throw cannotRead(path, reason);
    }
}
}
