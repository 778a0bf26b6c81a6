// SPDX-License-Identifier: GPL-3.0-or-later
// A small VST 3 host around one adapter over RecordingEffect.
#pragma once

#include "Orbel/Wrapper/VST3/Orbel_VST3.h"
#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstprocesscontext.h"
#include "public.sdk/source/common/memorystream.h"
#include "support/RecordingEffect.h"

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace vst3_host
{
using namespace Steinberg;
using namespace Steinberg::Vst;

// Not counted: each lives on a test's stack.
template <typename Interface>
struct Mine : Interface
{
    tresult PLUGIN_API queryInterface(const TUID id, void** object) override
    {
        const bool known = FUnknownPrivate::iidEqual(id, Interface::iid);
        *object = known ? this : nullptr;
        return known ? kResultOk : kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
};

struct Queue : Mine<IParamValueQueue>
{
    using Point = std::pair<int32, double>;
    Queue(ParamID parameter, std::vector<Point> all) : id(parameter), points(std::move(all)) {}
    ParamID PLUGIN_API getParameterId() override { return id; }
    int32 PLUGIN_API getPointCount() override { return int32(points.size()); }
    tresult PLUGIN_API getPoint(int32 index, int32& offset, ParamValue& value) override
    {
        std::tie(offset, value) = points.at(size_t(index)); // throws where there is no such point
        return kResultOk;
    }
    tresult PLUGIN_API addPoint(int32, ParamValue, int32&) override { return kNotImplemented; }

    ParamID id;
    std::vector<Point> points;
};

struct Changes : Mine<IParameterChanges>
{
    int32 PLUGIN_API getParameterCount() override { return int32(queues.size()); }
    IParamValueQueue* PLUGIN_API getParameterData(int32 i) override { return &queues[size_t(i)]; }
    IParamValueQueue* PLUGIN_API addParameterData(const ParamID&, int32&) override { return nullptr; }

    std::vector<Queue> queues;
};

struct Events : Mine<IEventList>
{
    int32 PLUGIN_API getEventCount() override { return int32(list.size()); }
    tresult PLUGIN_API getEvent(int32 i, Event& event) override
    {
        event = list[size_t(i)];
        return kResultOk;
    }
    tresult PLUGIN_API addEvent(Event&) override { return kNotImplemented; }

    std::vector<Event> list;
};

struct VST3Driver
{
    static constexpr bool growsForLongBlocks = false;

    ~VST3Driver() { destroy(); }

    bool make()
    {
        destroy();
        adapter = owned(new Orbel::Orbel_VST3(RecordingEffect::description()));
        return adapter->initialize(nullptr) == kResultOk;
    }
    void destroy()
    {
        if (adapter)
            adapter->terminate();
        adapter = nullptr;
    }
    bool setUp(double rate, int largestBlock)
    {
        ProcessSetup setup{kRealtime, kSample32, largestBlock, rate};
        return adapter->setupProcessing(setup) == kResultOk;
    }

    void automate(int parameter, float position, int offset)
    {
        changes.queues.push_back({ParamID(parameter), {{offset, position}}});
    }
    bool process(HostBlock block) { return call(block, 1, 1) == kResultOk; }
    void flush() { call({}, 0, 0); }
    // The same with so many buses, of which the first has the block's channels and the others none.
    tresult call(HostBlock block, int inputBuses, int outputBuses)
    {
        AudioBusBuffers inputs[2], outputs[2];
        inputs[0].numChannels = int32(block.inputs.size());
        inputs[0].channelBuffers32 = block.inputs.data();
        outputs[0].numChannels = int32(block.outputs.size());
        outputs[0].channelBuffers32 = block.outputs.data();
        outputs[0].silenceFlags = 3;
        ProcessData data;
        data.symbolicSampleSize = kSample32;
        data.numSamples = block.frames;
        data.numInputs = inputBuses;
        data.numOutputs = outputBuses;
        data.inputs = inputs;
        data.outputs = outputs;
        data.inputParameterChanges = &changes;
        data.inputEvents = &events;
        data.processContext = context;
        const tresult result = adapter->process(data);
        silenceFlags = outputs[0].silenceFlags;
        changes.queues.clear();
        return result;
    }

    std::string state()
    {
        MemoryStream stream;
        const bool saved = adapter->getState(&stream) == kResultOk;
        return saved ? std::string(stream.getData(), size_t(stream.getSize())) : "";
    }
    tresult setState(std::string bytes)
    {
        MemoryStream stream(bytes.data(), TSize(bytes.size()));
        return adapter->setState(&stream);
    }
    float defaultPosition(int parameter)
    {
        ParameterInfo info{};
        adapter->getParameterInfo(parameter, info);
        return float(info.defaultNormalizedValue);
    }

    IPtr<Orbel::Orbel_VST3> adapter;
    Changes changes;
    Events events;
    ProcessContext* context = nullptr;
    uint64 silenceFlags = 0;
};
}
