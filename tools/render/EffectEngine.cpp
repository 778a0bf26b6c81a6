// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/EffectEngine.h"

#include "Orbel/contract/BlockRoad.h"
#include "Orbel/contract/OrbelFactory.h"
#include "Orbel/contract/TransportHelpers.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "effect/instance/CQDT_DKS_Single.h"

#include <algorithm>
#include <cmath>

namespace lodex
{
EffectEngine::EffectEngine()
    : effect(createOrbelInstance(nullptr, 0)), product(dynamic_cast<CQDT_DKS_Single&>(*effect))
{
    for (int id = 0; Orbel::ParameterProperty* property = effect->getParameterPropertyByID(id); ++id)
    {
        infos.push_back(
            {property->getID(), property->getMin(), property->getMax(), property->getAutomationIndex()});
        properties.push_back(property);
    }
}

EffectEngine::~EffectEngine() = default;

void EffectEngine::prepare(int rate, int largestBlock)
{
    sampleRate = rate;
    effect->setSampleRate(float(rate));
    effect->setBlockSize(largestBlock);
}

void EffectEngine::setTimeBase(float beats)
{
    product.setTimeAdjust(beats);
}

void EffectEngine::set(ParameterValue value)
{
    properties[size_t(value.parameter)]->setValue(value.value);
}

void EffectEngine::loadPreset(const std::string& chunk, PresetType taken)
{
    std::string copy = chunk; // which the effect may change
    product.setPresetType(int(taken));
    product.setDataChunk(copy.data(), long(copy.size()));
    product.setPresetType(int(PresetType::state));
}

void EffectEngine::reset()
{
    effect->reset();
}

void EffectEngine::queueSet(ParameterValue value, int offset)
{
    effect->addSyncParameterSetEvent(properties[size_t(value.parameter)], normalize(value), offset);
}

float EffectEngine::normalize(ParameterValue value) const
{
    return float(properties[size_t(value.parameter)]->normalize(value.value));
}

std::string EffectEngine::state()
{
    char* chunk = nullptr;
    const long size = product.getDataChunk(&chunk);
    return {chunk, size_t(size)};
}

static Orbel::CHostTimeInfo hostTime(const RenderBlock& block, double rate)
{
    Orbel::CHostTimeInfo time;
    time.samplePosition = double(block.first);
    time.ppqPosition = block.transport.ppq;
    time.timeSignatureNumerator = 4;
    time.timeSignatureDenominator = 4;
    time.barStartPosition = std::floor(block.transport.ppq / 4.0) * 4.0;
    time.tempo = float(block.transport.tempo);
    time.samplesToNextBeat = Orbel::Helpers::getSamplesToNextBeat(time.tempo, time.ppqPosition, rate);
    time.playing = block.transport.playing;
    return time;
}

namespace
{
// Pieces as in VST 3 hosts; positions go on by division, as those of Transport do.
constexpr Orbel::BlockRules rules = {Orbel::BlockRules::wholeBelowTwiceDesired,
                                     Orbel::BlockRules::cutTheBlock, Orbel::BlockRules::quotient};

// The effect keeps the gain record of its last piece alone.
class GainCollector final : public Orbel::BlockObserver
{
public:
    GainCollector(const CQDT_DKS_Single& recording, float* record) : effect(recording), end(record) {}
    void pieceProcessed(int frames) override { end = std::copy_n(effect.getGainRecord(), frames, end); }

private:
    const CQDT_DKS_Single& effect;
    float* end;
};
}

void EffectEngine::process(RenderBlock& block)
{
    GainCollector collector(product, block.gainRecord);
    Orbel::AudioBusInformation buses(block.input, 1, block.output, 1, block.frames);
    buses.timeInfo = hostTime(block, sampleRate);
    Orbel::BlockRoad(*effect, rules, &collector).process(buses, sampleRate);
}
}
