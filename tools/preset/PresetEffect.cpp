// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/preset/PresetEffect.h"

#include "Orbel/contract/OrbelFactory.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "Orbel/storage/CFileFormat.h"
#include "effect/instance/CQDT_DKS_Single.h"
#include "presets/StateLayout.h"

namespace lodex
{
constexpr float tempoOfTexts = 128.0f; // beats a minute

// The effect learns the tempo with a block.
static void processAtTempo(Orbel::OrbelOS& effect, float tempo)
{
    float samples[4] = {};
    float* input[] = {&samples[0], &samples[1]};
    float* output[] = {&samples[2], &samples[3]};
    effect.setBlockSize(1);
    Orbel::AudioBusInformation bus(input, 1, output, 1, 1);
    bus.timeInfo.tempo = tempo;
    effect.processAudio(bus);
}

PresetEffect::PresetEffect()
    : effect(createOrbelInstance(nullptr, 0)), product(dynamic_cast<CQDT_DKS_Single&>(*effect))
{
    processAtTempo(*effect, tempoOfTexts);
}

PresetEffect::~PresetEffect() = default;

void PresetEffect::load(const PresetFile& file, size_t index, PresetType taken)
{
    product.setPresetType(int(taken));
    for (std::string& chunk : file.chunks(index, taken))
        product.setDataChunk(chunk.data(), long(chunk.size()));
    product.finishBankLoad();
}

PresetContent PresetEffect::content()
{
    PresetContent content;
    Orbel::CPresetStore store;
    store.setPresetID(StateLayout::presetID);
    std::string chunk = presetChunk();
    store.setPreset(chunk.data(), long(chunk.size()));
    content.name = store.getString(StateLayout::nameChunk);
    content.timeBase = product.getTimeAdjust();
    for (int id = 0; Orbel::ParameterProperty* property = effect->getParameterPropertyByID(id); ++id)
    {
        char text[Orbel::kParameterTextSize] = "";
        const float value = property->getCurrentValue();
        property->getStringFromValue(value, text, Orbel::kRenderWithUnit);
        content.parameters.push_back({property->getID(), value, text});
    }
    return content;
}

std::string PresetEffect::programFile(const std::string& name)
{
    const std::string chunk = presetChunk();
    return Orbel::kPresetFormatFXP->wrap(name.c_str(), chunk.data(), long(chunk.size()));
}

std::string PresetEffect::presetChunk()
{
    product.setPresetType(int(PresetType::preset));
    char* bytes = nullptr;
    const long size = product.getDataChunk(&bytes);
    return {bytes, size_t(size)};
}
}
