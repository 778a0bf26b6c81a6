// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/VST3Engine.h"

#include "CORE/ForeignData.h"
#include "pluginterfaces/vst/ivstprocesscontext.h"
#include "public.sdk/source/common/memorystream.h"
#include "tools/common/ToolError.h"

#include <cmath>

namespace lodex
{
using namespace Steinberg;
using namespace Steinberg::Vst;

static void require(bool done, const char* what)
{
    if (!done)
        throw ToolError(std::string("the VST 3 plug-in refuses ") + what);
}

VST3Engine::VST3Engine() : module(findVST3Bundle()), component(module.createEffect()), processor(component)
{
    require(processor, "to process audio");
    require(component->initialize(nullptr) == kResultOk, "to start");
}

VST3Engine::~VST3Engine()
{
    if (running)
        component->setActive(false);
    component->terminate();
}

void VST3Engine::prepare(int rate, int largestBlock)
{
    sampleRate = rate;
    start.prepare(rate, largestBlock);
    ProcessSetup setup{kOffline, kSample32, largestBlock, sampleRate};
    require(processor->setupProcessing(setup) == kResultOk, "the sample rate or the block size");
    for (const BusDirection direction : {kInput, kOutput})
        require(component->activateBus(kAudio, direction, 0, true) == kResultOk, "a stereo bus");
}

void VST3Engine::setTimeBase(float beats)
{
    if (running)
        throw ToolError("the engine \"vst3\" can't change the time base on the way");
    start.setTimeBase(beats);
}

void VST3Engine::reset()
{
    const std::string state = start.state();
    std::string stream(8, '\0'); // the size and the program
    Core::writeLittle32(stream.data(), std::uint32_t(state.size()));
    stream += state;
    MemoryStream memory(stream.data(), TSize(stream.size()));
    require(component->setState(&memory) == kResultOk, "its state");
    require(component->setActive(true) == kResultOk, "to be active");
    processor->setProcessing(true);
    running = true;
}

void VST3Engine::queueSet(ParameterValue value, int offset)
{
    const ParameterInfo& parameter = parameters()[size_t(value.parameter)];
    if (parameter.automationIndex < 0)
        throw ToolError("hosts can't automate " + parameter.id +
                        ", so the engine \"vst3\" can't set it on the way");
    changes.add(ParamID(parameter.automationIndex), offset, start.normalize(value));
}

static ProcessContext contextOf(const RenderBlock& block, double rate)
{
    constexpr double beatsInBar = 4.0;
    ProcessContext context{};
    context.state = ProcessContext::kTempoValid | ProcessContext::kProjectTimeMusicValid |
                    ProcessContext::kBarPositionValid | ProcessContext::kTimeSigValid;
    if (block.transport.playing)
        context.state |= ProcessContext::kPlaying;
    context.sampleRate = rate;
    context.projectTimeSamples = block.first;
    context.projectTimeMusic = block.transport.ppq;
    context.barPositionMusic = std::floor(block.transport.ppq / beatsInBar) * beatsInBar;
    context.tempo = block.transport.tempo;
    context.timeSigNumerator = context.timeSigDenominator = 4;
    return context;
}

void VST3Engine::process(RenderBlock& block)
{
    AudioBusBuffers input, output;
    input.numChannels = output.numChannels = 2;
    input.channelBuffers32 = block.input;
    output.channelBuffers32 = block.output;
    ProcessContext context = contextOf(block, sampleRate);

    ProcessData data;
    data.processMode = kOffline;
    data.symbolicSampleSize = kSample32;
    data.numSamples = block.frames;
    data.numInputs = data.numOutputs = 1;
    data.inputs = &input;
    data.outputs = &output;
    data.inputParameterChanges = &changes;
    data.processContext = &context;
    require(processor->process(data) == kResultOk, "a block");
    changes.clear();
}
}
