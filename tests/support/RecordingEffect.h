// SPDX-License-Identifier: GPL-3.0-or-later
// An effect that records what an adapter does with it, in place of a product. A test sets up plan before it
// makes the adapter; the effect that the adapter makes is then latest. RecordingEffect.cpp brings the doors
// of a bundle (OrbelFactory.h) that makes such effects.
#pragma once

#include "Orbel/contract/OrbelFactory.h"
#include "Orbel/parameters/ParameterProperty.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// A block as the drivers of the adapters' tests hand it over.
struct HostBlock
{
    int frames;
    std::vector<float*> inputs; // one pointer for each channel: none, left, or both
    std::vector<float*> outputs;
};

struct RecordingEditor : Orbel::IEditor
{
    void getSize(double& width, double& height) const override
    {
        width = 600.9 * scale, height = 350.2 * scale;
    }
    void setWindow(Orbel::IEditorWindow* shownIn) override { window = shownIn; }
    void setContentScale(double pixels) override
    {
        scale = pixels;
        if (window)
            window->resize(600.0 * scale, 350.0 * scale);
    }
    bool open(void* parent, const char* type) override
    {
        log += std::string("open ") + type + ";";
        if (onOpen)
            onOpen();
        return parent != nullptr;
    }
    void close() override { log += "close;"; }
    bool onWheel(float distance) override { return distance > 0.0f; }
    bool onKeyDown(const Core::KeyCode& key) override { return record("down", key); }
    bool onKeyUp(const Core::KeyCode& key) override { return record("up", key); }
    bool record(const char* what, const Core::KeyCode& key)
    {
        log += std::string(what) + " " + std::to_string(int(key.character)) + " " +
               std::to_string(key.virtualKey) + " " + std::to_string(key.modifiers) + ";";
        return key.character != 'x';
    }

    std::string log;
    double scale = 1.0;
    Orbel::IEditorWindow* window = nullptr;
    std::function<void()> onOpen;
};

// How the next effect will be.
struct EffectPlan
{
    long type = Orbel::OrbelFX_Description::effect;
    std::vector<std::string> ids = {"LEVEL", "kBypass", "BYPASS"};
    long desired = -1;
    float defaultValue = 0.0f; // of every parameter
    bool makes = true;         // an effect at all
    bool hasEditor = false;
};

struct RecordingEffect : Orbel::OrbelOS
{
    static inline EffectPlan plan;
    static inline RecordingEffect* latest = nullptr;
    static Orbel::OrbelFX_Description description(); // what an adapter is told of it

    struct Piece
    {
        int frames;
        double samplePosition, ppq;
        float level; // of the first parameter
    };

    explicit RecordingEffect(Orbel::OrbelCallback* asked) : OrbelOS(asked)
    {
        for (size_t i = 0; i < plan.ids.size(); ++i)
        {
            Orbel::ParameterPropertySetup row;
            row.id = row.longName = row.shortName = plan.ids[i];
            row.parameterId = int(i);
            row.minimum = -10.0f;
            row.maximum = 10.0f;
            row.defaultValue = plan.defaultValue;
            row.curve = i == 0 ? 4.0f : 0.0f;
            row.unitType = Orbel::ParameterUnitType::PlainDecibels;
            properties.push_back(std::make_unique<Orbel::ParameterProperty>());
            properties.back()->setup(&row);
            properties.back()->setAutomationIndex(long(i));
        }
        if (plan.hasEditor)
            editor = std::make_unique<RecordingEditor>();
        latest = this;
    }
    ~RecordingEffect() override { latest = latest == this ? nullptr : latest; }

    using OrbelOS::getParameterProperty;
    Orbel::ParameterProperty* getParameterProperty(int i) override { return properties[size_t(i)].get(); }
    int getParameterCount() override { return int(properties.size()); }
    bool getProgramNameIndexed(int i, char* text) override
    {
        return snprintf(text, 256, "Gr\xC3\xBC\xC3\x9F %d", i) > 0;
    }
    long getDesiredProcessBlockSize() override { return plan.desired; }
    void setDataChunk(char* data, long size) override
    {
        log += "chunk " + std::string(data, size_t(size)) + ";";
    }
    long getDataChunk(char** data) override
    {
        *data = chunk.data();
        return long(chunk.size());
    }
    void setProgram(int program) override
    {
        OrbelOS::setProgram(program);
        log += "program " + std::to_string(program) + ";";
    }
    void setSampleRate(float rate) override { log += "rate " + std::to_string(int(rate)) + ";"; }
    void setBlockSize(long size) override { log += "size " + std::to_string(size) + ";"; }
    void resume() override { log += "resume;"; }
    void suspend() override { log += "suspend;"; }
    void reset() override { log += "reset;"; }
    void processMidiEventList(std::vector<Orbel::OrbelMidiEvent>& events) override
    {
        midi.insert(midi.end(), events.begin(), events.end());
    }
    void processAudio(Orbel::AudioBusInformation& bus) override
    {
        pieces.push_back({bus.numSamples, bus.timeInfo.samplePosition, bus.timeInfo.ppqPosition,
                          properties[0]->getCurrentValue()});
        time = bus.timeInfo;
        for (int i = 0; i < bus.numSamples; ++i) // the right side last: it must not see the left one's output
            bus.outputs[0].left[i] = 2.0f * bus.inputs[0].left[i];
        for (int i = 0; i < bus.numSamples; ++i)
            bus.outputs[0].right[i] = 3.0f * bus.inputs[0].right[i];
    }

    std::string takeLog() { return std::exchange(log, ""); }
    Orbel::OrbelCallback* host() const { return getCallback(); }

    std::vector<std::unique_ptr<Orbel::ParameterProperty>> properties;
    std::vector<Piece> pieces;
    std::vector<Orbel::OrbelMidiEvent> midi;
    Orbel::CHostTimeInfo time;
    std::string log, chunk = "state";
};
