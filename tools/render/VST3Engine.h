// SPDX-License-Identifier: GPL-3.0-or-later
// The built VST 3 bundle as an engine, through its factory, as a host drives it.
//
// Before the first block, an effect in this process takes what a render starts with, and hands it to the
// plug-in as a host's state. From then on only what hosts can automate changes. A host gets no gain record.
#pragma once

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "tools/render/EffectEngine.h"
#include "tools/render/ParameterChanges.h"
#include "tools/render/VST3Module.h"

namespace lodex
{
class VST3Engine : public RenderEngine
{
public:
    // Throws a ToolError if there is no bundle, or one that is not ours.
    VST3Engine();
    ~VST3Engine() override;

    const std::vector<ParameterInfo>& parameters() const override { return start.parameters(); }
    bool recordsGain() const override { return false; }
    void prepare(int rate, int largestBlock) override;
    void setTimeBase(float beats) override;
    void set(ParameterValue value) override { start.set(value); }
    void loadPreset(const std::string& chunk, PresetType taken) override { start.loadPreset(chunk, taken); }
    void reset() override;
    void queueSet(ParameterValue value, int offset) override;
    void process(RenderBlock& block) override;

private:
    EffectEngine start;
    VST3Module module;
    Steinberg::IPtr<Steinberg::Vst::IComponent> component;
    Steinberg::FUnknownPtr<Steinberg::Vst::IAudioProcessor> processor;
    ParameterChanges changes;
    double sampleRate = 0.0;
    bool running = false;
};
}
