// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/pack_presets/FactoryBank.h"

#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/storage/CFileFormat.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"
#include "presets/SavedBank.h"
#include "presets/SavedState.h"
#include "presets/StateLayout.h"

namespace lodex
{
std::string packPreset(const PresetText& preset)
{
    Orbel::CPropertyManager parameters;
    for (const Orbel::ParameterPropertySetup& row : DKS_Mini::ps_plain)
        parameters.CreateProperty(&row);
    for (const PresetText::Value& each : preset.values)
        parameters.getPropertyByID(each.parameter)->setValue(each.value);

    SavedState state;
    state.name = preset.name;
    state.parameters = parameters.getRecords();
    state.timeBase = gTimeAdjustMultiplier[preset.timeBase];
    return state.bytes();
}

std::string packBank(const std::vector<PresetText>& texts)
{
    std::vector<std::string> presets;
    presets.reserve(texts.size());
    for (const PresetText& each : texts)
        presets.push_back(packPreset(each));
    const std::string payload = SavedBank::bytes(presets);

    Orbel::CPresetFormatFXB format;
    format.setPluginID(StateLayout::pluginID);
    return format.wrap(payload.data(), long(payload.size()));
}

std::string packProgram(const PresetText& preset)
{
    const std::string payload = packPreset(preset);

    Orbel::CPresetFormatFXP format;
    format.setPluginID(StateLayout::pluginID);
    return format.wrap(preset.name.c_str(), payload.data(), long(payload.size()));
}
}
