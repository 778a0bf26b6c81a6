#include "tools/pack_presets/FactoryBank.h"

#include "CORE/Numbers.h"
#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/storage/CFileFormat.h"
#include "Orbel/storage/CPresetStore.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"

namespace lodex
{
static std::string contentOf(Orbel::CPresetStore& store)
{
    char* data = nullptr;
    const long size = store.getPreset(&data);
    return {data, size_t(size)};
}

static void addParameters(Orbel::CPresetStore& store, const PresetText& preset)
{
    Orbel::CPropertyManager parameters;
    for (const Orbel::ParameterPropertySetup& row : DKS_Mini::ps_plain)
        parameters.CreateProperty(&row);
    for (const PresetText::Value& each : preset.values)
        parameters.getPropertyByID(each.parameter)->setValue(each.value);

    char* chunk = nullptr;
    if (const unsigned long size = parameters.getChunk(&chunk))
        store.addChunk("PPDATA", chunk, long(size));
}

std::string packPreset(const PresetText& preset)
{
    Orbel::CPresetStore store;
    store.setPresetID("QDT_DKS_PRESET");
    store.setPresetName(preset.name.c_str());
    store.addString("SINGLEPRESET", preset.name);
    addParameters(store, preset);
    store.addString("ENV_TIME_ADJUST", Core::formatFixed(gTimeAdjustMultiplier[preset.timeBase], 8));
    return contentOf(store);
}

std::string packBank(const std::vector<PresetText>& presets)
{
    Orbel::CPresetStore bank;
    bank.setPresetID("QDT_DKS_BANK");
    bank.addString("NumPresets", std::to_string(presets.size()));
    bank.addString("CurrentPreset", "0");
    for (size_t i = 0; i < presets.size(); ++i)
    {
        const std::string preset = packPreset(presets[i]);
        bank.addChunk(("PRESET" + std::to_string(i)).c_str(), preset.data(), long(preset.size()));
    }
    const std::string payload = contentOf(bank);

    Orbel::CPresetFormatFXB format;
    format.setPluginID(factoryPluginID);
    return format.wrap(payload.data(), long(payload.size()));
}

std::string packProgram(const PresetText& preset)
{
    const std::string payload = packPreset(preset);

    Orbel::CPresetFormatFXP format;
    format.setPluginID(factoryPluginID);
    return format.wrap(preset.name.c_str(), payload.data(), long(payload.size()));
}
}
