// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/SavedBank.h"

#include "presets/StateLayout.h"

#include <cstdlib>

static std::string presetChunkName(long number)
{
    return StateLayout::presetChunk + std::to_string(number);
}

SavedBank::SavedBank()
{
    store.setPresetID(StateLayout::bankID);
}

Orbel::Diagnosis SavedBank::read(std::string_view data, Orbel::UnpackingAllowance& allowance)
{
    std::string copy(data); // reading changes it
    return store.read(copy, allowance);
}

std::optional<long> SavedBank::getDeclaredCount() const
{
    const Sonvex::String text = store.getString(StateLayout::countChunk);
    if (text.empty())
        return {};
    return std::strtol(text.c_str(), nullptr, 10);
}

long SavedBank::getCurrent() const
{
    return std::strtol(store.getString(StateLayout::currentChunk).c_str(), nullptr, 10);
}

std::string_view SavedBank::getPreset(long number) const
{
    return number < 0 ? std::string_view() : chunk(presetChunkName(number));
}

std::string_view SavedBank::getSystemSettings() const
{
    return chunk(StateLayout::systemChunk);
}

std::string_view SavedBank::chunk(const std::string& name) const
{
    char* data = nullptr;
    const long size = store.getChunk(name.c_str(), &data);
    return {data, size_t(size)};
}

std::string SavedBank::bytes(const std::vector<std::string>& presets, std::string_view systemSettings)
{
    Orbel::CPresetStore bank;
    bank.setPresetID(StateLayout::bankID);
    bank.addString(StateLayout::countChunk, std::to_string(presets.size()));
    bank.addString(StateLayout::currentChunk, "0");
    for (size_t i = 0; i < presets.size(); ++i)
        bank.addChunk(presetChunkName(long(i)).c_str(), presets[i].data(), long(presets[i].size()));
    if (!systemSettings.empty())
        bank.addChunk(StateLayout::systemChunk, systemSettings.data(), long(systemSettings.size()));
    char* data = nullptr;
    const long size = bank.getPreset(&data);
    return {data, size_t(size)};
}
