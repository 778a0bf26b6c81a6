// SPDX-License-Identifier: GPL-3.0-or-later
// The adapter's part of the road of a block. [audio thread] throughout.
#include "Orbel/Wrapper/VST3/OrbelVST3Parameter.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3.h"
#include "Orbel/contract/BlockRoad.h"
#include "Orbel/contract/ChannelWiring.h"
#include "Orbel/contract/TransportHelpers.h"
#include "pluginterfaces/vst/ivstprocesscontext.h"

#include <algorithm>

namespace Orbel
{
using namespace Steinberg;
using namespace Steinberg::Vst;

namespace
{
constexpr BlockRules rules = {BlockRules::wholeBelowTwiceDesired, BlockRules::cutTheBlock,
                              BlockRules::product};
constexpr double tempoWithoutHost = 120.0;

HostBus hostBus(const AudioBusBuffers& bus)
{
    const auto channel = [&](int32 index)
    { return bus.channelBuffers32 && index < bus.numChannels ? bus.channelBuffers32[index] : nullptr; };
    return {channel(0), channel(1), bus.numChannels == 1};
}

// The main bus comes last: see ChannelWiring.
void wireInputs(ChannelWiring& wiring, const ProcessData& data)
{
    for (int i = std::min<int>(data.numInputs, ChannelWiring::maximumBuses) - 1; i >= 0; --i)
        wiring.wireInput(i, hostBus(data.inputs[i]));
}

void wireOutputs(ChannelWiring& wiring, const ProcessData& data)
{
    for (int i = 0; i < std::min<int>(data.numOutputs, ChannelWiring::maximumBuses); ++i)
    {
        wiring.wireOutput(i, hostBus(data.outputs[i]));
        data.outputs[i].silenceFlags = 0; // whether the output is silent is not looked at
    }
}

bool has(const ProcessContext& context, ProcessContext::StatesAndFlags flag)
{
    return (context.state & flag) != 0;
}

CHostTimeInfo timeOf(const ProcessContext* context, double sampleRate)
{
    CHostTimeInfo time;
    double tempo = tempoWithoutHost;
    if (context)
    {
        time.samplePosition = double(context->projectTimeSamples);
        time.ppqPosition = context->projectTimeMusic;
        time.barStartPosition = context->barPositionMusic;
        time.playing = has(*context, ProcessContext::kPlaying);
        time.cycleActive = has(*context, ProcessContext::kCycleActive);
        time.recording = has(*context, ProcessContext::kRecording);
        tempo = context->tempo;
    }
    time.tempo = float(tempo);
    time.transportChanged = time.automationWriting = time.automationReading = true;
    time.samplesToNextBeat = Helpers::getSamplesToNextBeat(time.tempo, time.ppqPosition, sampleRate);
    return time;
}
}

tresult PLUGIN_API Orbel_VST3::process(ProcessData& data)
{
    if (!effect)
        return kNotInitialized;
    const bool noInputs = data.numInputs <= 0 || !data.inputs;
    const bool noOutputs = data.numOutputs <= 0 || !data.outputs;
    const bool hasBuses = !noOutputs && (!noInputs || description.numStereoInputs <= 0);
    const bool tooLong = size_t(std::max(data.numSamples, 0)) > silence.size();
    if (hasBuses && (tooLong || data.symbolicSampleSize != kSample32))
        return kResultFalse;

    BlockRoad road(*effect, rules);
    if (data.inputParameterChanges)
        takeParameterChanges(*data.inputParameterChanges);
    if (hasBuses && data.inputEvents && takesMidi())
        takeEvents(*data.inputEvents);
    processMidi();
    if (hasBuses && data.numSamples > 0)
        processAudio(data, road);
    else
        road.flush(); // a host may change parameters while nothing plays
    return kResultOk;
}

void Orbel_VST3::processAudio(ProcessData& data, BlockRoad& road)
{
    ChannelWiring wiring(silence.data(), data.numSamples);
    if (data.inputs)
        wireInputs(wiring, data);
    wireOutputs(wiring, data);
    AudioBusInformation block(wiring.inputs(), data.inputs ? data.numInputs : 0, wiring.outputs(),
                              data.numOutputs, data.numSamples);

    const ProcessContext* const context = data.processContext;
    const double setRate = getProcessSetup().sampleRate;
    block.timeInfo = timeOf(context, setRate);
    currentTempo = block.timeInfo.tempo;
    road.process(block, context && context->sampleRate > 0.0 ? context->sampleRate : setRate);
}

// Only the last point of a queue counts, at its own offset.
void Orbel_VST3::takeParameterChanges(IParameterChanges& changes)
{
    for (int32 i = 0; i < changes.getParameterCount(); ++i)
    {
        IParamValueQueue* const queue = changes.getParameterData(i);
        const int32 points = queue ? queue->getPointCount() : 0;
        int32 sampleOffset = 0;
        ParamValue position = 0.0;
        if (points <= 0 || queue->getPoint(points - 1, sampleOffset, position) != kResultOk)
            continue;
        const ParamID id = queue->getParameterId();
        if (takesMidi() && id - firstController < ParamID(midiChannels * controllersPerChannel))
            takeController(id, sampleOffset, position);
        else
            takeParameterChange(id, sampleOffset, position);
    }
}

void Orbel_VST3::takeParameterChange(ParamID id, int32 sampleOffset, ParamValue position)
{
    if (id == kOwnBypass && bypassParameterId == kOwnBypass)
        setActive(position == 0.0);
    OrbelVST3Parameter* const parameter = findParameter(id);
    if (!parameter || parameter->editing || parameter->getProperty() == &programProperty)
        return;
    if (position != parameter->getNormalized())
        effect->addSyncParameterSetEvent(parameter->getProperty(), float(position), sampleOffset);
}
}
