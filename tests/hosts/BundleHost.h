// SPDX-License-Identifier: GPL-3.0-or-later
// A small VST 3 host around one object of the built bundle, with two stereo inputs and an output.
#pragma once

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstprocesscontext.h"
#include "public.sdk/source/common/memorystream.h"
#include "tools/render/ParameterChanges.h"
#include "tools/render/VST3Module.h"

#include <cstdint>
#include <string>
#include <vector>

struct BundleHost
{
    explicit BundleHost(const lodex::VST3Module& module)
        : component(module.createEffect()), processor(component), controller(component)
    {
        component->initialize(nullptr);
        context.state = Steinberg::Vst::ProcessContext::kPlaying;
        context.tempo = 140.0;
    }
    ~BundleHost() { component->terminate(); }

    bool setUp(double rate, int largest)
    {
        Steinberg::Vst::ProcessSetup setup{Steinberg::Vst::kRealtime, Steinberg::Vst::kSample32, largest,
                                           rate};
        context.sampleRate = rate;
        for (std::vector<float>& each : channels)
            each.resize(size_t(largest) + 1);
        return processor->setupProcessing(setup) == Steinberg::kResultOk &&
               component->setActive(true) == Steinberg::kResultOk;
    }

    // A block of noise; then the position moves on.
    Steinberg::tresult process(int frames)
    {
        for (size_t channel = 0; channel < 4; ++channel)
            for (int i = 0; i < frames; ++i)
                channels[channel][size_t(i)] = noise();
        const Steinberg::tresult result = processFilled(frames);
        context.projectTimeSamples += frames;
        context.projectTimeMusic += frames / (60.0 / context.tempo * context.sampleRate);
        return result;
    }

    // A block of what the channels hold, at a position that stays.
    Steinberg::tresult processFilled(int frames)
    {
        float* pointers[6];
        for (size_t i = 0; i < 6; ++i)
            pointers[i] = channels[i].data();
        Steinberg::Vst::AudioBusBuffers buses[3];
        for (size_t i = 0; i < 3; ++i)
        {
            buses[i].numChannels = 2;
            buses[i].channelBuffers32 = pointers + 2 * i;
        }
        Steinberg::Vst::ProcessData data;
        data.symbolicSampleSize = Steinberg::Vst::kSample32;
        data.numSamples = frames;
        data.numInputs = 2;
        data.numOutputs = 1;
        data.inputs = buses;
        data.outputs = buses + 2;
        data.inputParameterChanges = &changes;
        data.processContext = hasContext ? &context : nullptr;
        const Steinberg::tresult result = processor->process(data);
        changes.clear();
        return result;
    }

    // A call without audio.
    void flush()
    {
        Steinberg::Vst::ProcessData data;
        data.inputParameterChanges = &changes;
        processor->process(data);
        changes.clear();
    }

    std::string state() const
    {
        Steinberg::MemoryStream stream;
        const bool got = component->getState(&stream) == Steinberg::kResultOk;
        return got ? std::string(stream.getData(), size_t(stream.getSize())) : "";
    }
    Steinberg::tresult setState(std::string bytes)
    {
        Steinberg::MemoryStream stream(bytes.data(), Steinberg::TSize(bytes.size()));
        return component->setState(&stream);
    }

    float noise()
    {
        random = random * 1664525u + 1013904223u;
        return float(std::int32_t(random)) / 2147483648.0f;
    }
    double position() { return 0.5 + 0.5 * double(noise()); } // of a parameter

    Steinberg::IPtr<Steinberg::Vst::IComponent> component;
    Steinberg::FUnknownPtr<Steinberg::Vst::IAudioProcessor> processor;
    Steinberg::FUnknownPtr<Steinberg::Vst::IEditController> controller;
    lodex::ParameterChanges changes;
    Steinberg::Vst::ProcessContext context{};
    bool hasContext = true;
    std::vector<float> channels[6]; // two inputs and the output
    std::uint32_t random = 1;
};
