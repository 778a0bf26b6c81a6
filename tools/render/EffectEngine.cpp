#include "tools/render/EffectEngine.h"

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

static void advance(Orbel::CHostTimeInfo& time, int frames, double rate)
{
    time.samplePosition += frames;
    time.ppqPosition += frames / (60.0 / time.tempo * rate);
    time.samplesToNextBeat -= frames;
}

void EffectEngine::process(RenderBlock& block)
{
    Orbel::AudioBusInformation bus(block.input, 1, block.output, 1, block.frames);
    bus.timeInfo = hostTime(block, sampleRate);
    effect->prepareSyncParameterSet(bus.timeInfo, block.frames);
    const long desired = effect->getDesiredProcessBlockSize();
    for (int done = 0; done < block.frames;)
    {
        int piece = block.frames - done;
        if (desired > 0)
            piece = int(std::min<long>(piece, desired));
        effect->syncSetParameters(piece);
        bus.numSamples = piece;
        effect->processAudio(bus);
        std::copy_n(product.getGainRecord(), piece, block.gainRecord + done);

        bus.advanceInput(piece);
        bus.advanceOutput(piece);
        advance(bus.timeInfo, piece, sampleRate);
        done += piece;
    }
    effect->clearSyncSetEvents();
}
}
