// SPDX-License-Identifier: GPL-3.0-or-later
// The effect: ducks a stereo bus on every beat of the host, or on another note value.
//
// Host adapters make it and drive it through OrbelOS. Each block it reads the host's musical position,
// works out how many samples lie ahead of the next trigger, arms the ducker, delays the audio by the
// length of the ducker's pre-fade, and ducks it (DuckingPath).
//
// The host's position is the only trigger: no filter stands in the path, MIDI is not read, and neither
// is the second input bus, which is declared for the hosts' side-chain routing. The delay is not
// reported to the host, bypassed or not, so that the groove stays where it was.
//
// Threads: processAudio on the audio thread, which allocates nothing and takes no lock in a block of the
// announced size. Parameters are written, and parameterChanged runs, on any thread. setSampleRate,
// setBlockSize and reset come while audio stands. Names and state belong to the window thread.
#pragma once

#include "CORE/CString.h"
#include "CORE/Relaxed.h"
#include "DSP/cpuControl.h"
#include "Orbel/contract/ISamplerEffect.h"
#include "Orbel/contract/OrbelOS.h"
#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "Orbel/parameters/ParameterText.h"
#include "Orbel/storage/CPresetStore.h"
#include "effect/engine/BeatTrigger.h"
#include "effect/engine/DuckingPath.h"
#include "effect/instance/EffectScope.h"
#include "effect/instance/IEffectEditor.h"
#include "effect/instance/TimeLinker.h"
#include "presets/IPresetEffect.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class Single_CPresetInterface;
struct SavedState;

class CQDT_DKS_Single : public Orbel::OrbelOS, public Orbel::ISamplerEffect, public IPresetEffect
{
public:
    // hostCallback is not owned and may be null. The effect is complete: it can process once setBlockSize
    // ran.
    explicit CQDT_DKS_Single(Orbel::OrbelCallback* hostCallback);
    ~CQDT_DKS_Single() override;

    // [any thread]
    void parameterChanged(Orbel::ParameterProperty* property) override;

    // Hosts see the ten automatable parameters, by index; lookups by id go over all fifteen.
    int getParameterCount() override { return propertyManager.getAutomateAblePropertyCount(); }
    Orbel::ParameterProperty* getParameterProperty(int index) override
    {
        return propertyManager.getProperty_automateable(index);
    }
    Orbel::ParameterProperty* getParameterProperty_automateable(int index) override
    {
        return propertyManager.getProperty_automateable(index);
    }
    Orbel::ParameterProperty* getParameterPropertyByID(int id) override
    {
        return propertyManager.getPropertyByID(id);
    }
    Orbel::ParameterProperty* getParameterProperty(const char* idText) override
    {
        return propertyManager.getProperty(idText);
    }

    // There is one program, whatever the index: the preset that is loaded. Names in, without the number
    // that a preset file's name begins with; names out, of at most 28 characters.
    void setProgram(int) override {}
    void setProgramName(const char* name) override { setPresetName(name); }
    bool getProgramName(char* text) override;
    bool getProgramNameIndexed(int, char* text) override { return getProgramName(text); }
    void setPresetName(const char* name) override;

    // [audio stopped] Hertz above 0, and samples. What is not above 0 is not taken.
    void setSampleRate(float rate) override;
    void setBlockSize(long samples) override;
    // [audio stopped] Clears audio, envelope and countdowns; parameters stay.
    void reset() override;

    // [audio thread] A quarter of the interval between triggers where the block is longer than that: a block
    // of more than half an interval could pass over a trigger.
    long getDesiredProcessBlockSize() override;
    // [audio thread] The first input bus to the first output bus, which may share memory. A block above the
    // announced size is worked all the same, but allocates. Bypassed, the audio is still delayed, and all
    // countdowns stand.
    void processAudio(Orbel::AudioBusInformation& info) override;

    // [any thread] The interval between triggers in beats: one of gTimeAdjustMultiplier.
    void setTimeAdjust(float beats);
    float getTimeAdjust() const { return timeContext.timeAdjust; }

    // [window thread] State: one chunk for a host's project and for a preset's file, which differ by the type
    // set before. getDataChunk's bytes stay good until the next call of it or of setDataChunk; its result is
    // their size. setDataChunk takes every form that this effect or its forerunners wrote, and puts every
    // parameter to its default where it can't take any of it; below 10 bytes it does nothing.
    enum PresetType : int
    {
        hostState = 0,
        presetFile = 1 // without the system settings: sense, envelope hold, click filter, scaling, shift
    };
    void setPresetType(int type) override { presetType = type; }
    long getDataChunk(char** out) override;
    void setDataChunk(char* data, long size) override;
    // The current preset of a bank. Afterwards no time moves another, and the time base is the one from
    // before, until the next state or finishBankLoad, which brings the preset's own time base.
    void loadPresetFromBankChunk(const char* data, long size);
    void finishBankLoad() override;
    // The preset's name as a property of type Text: its listeners hear of every new name. It stays the
    // effect's.
    Orbel::ParameterProperty& getPresetNameProperty() { return presetNameProperty; }
    // The start state; audio falls silent at its next block.
    void initPreset();

    // [window thread] The library of presets on disk, made when it is first asked for.
    Single_CPresetInterface& getPresetInterface();
    // Its folder, with "/" as separators and at its end; the user's choice is kept for all instances.
    const char* getPresetFolder();
    void setPresetFolder(const char* folder);
    // Writes the factory presets into the library's folder.
    void restoreBank();

    // [any thread] Lets the linked times give way, after parameter id changed. An id of -1 ends the reading
    // of a state, which a bank's chunk leaves open: until then no time moves another.
    void updateEnvelopeTimes(int id);

    // [audio thread] For each sample of the last block 1 - 2 x gain, as CBusSidechainFx writes it; -1 while
    // bypassed. Null before setBlockSize.
    const float* getGainRecord() const { return path.gainRecord(); }

    // What the window shows of the audio; the window switches it on while it is open.
    EffectScope& getScope() { return scope; }

    // [window thread] The editor's window; without an editor nothing happens.
    void getEditorSize(Tovra::CRect& rectangle) override
    {
        if (editorRef)
            editorRef->getEditorSize(rectangle);
    }
    void open_editor(void* parentWindow) override
    {
        if (editorRef)
            editorRef->open_sampler_editor(parentWindow);
    }
    void close_editor() override
    {
        if (editorRef)
            editorRef->close_sampler_editor();
    }

private:
    void createProperties();
    void createEditor();
    void notifyTimes();
    float valueOf(int parameterId) const;
    template <typename Store>
    void settle(const Orbel::ParameterProperty& property, Store store);
    void applyParameters();
    int lookAhead();
    void updateTempo(float tempo);

    void readChunk(const char* data, long size, int depth);
    void readOlderForm(const char* data, long size, int depth);
    void readPreset(const SavedState& state);
    void storeTimeAdjust(float beats);

    BeatTrigger triggerAt(float tempo);
    void followTransport(const Orbel::CHostTimeInfo& time);
    void takeTempo(float hostTempo);
    void armTrigger(const Orbel::CHostTimeInfo& time);

    IEffectEditor* editorRef = nullptr; // the same object as the base's editor, or null
    Orbel::CPropertyManager propertyManager;
    DuckingPath path;
    EffectScope scope;
    cpuControl cpuMode;

    TimeLinker timeLinker;
    Core::Relaxed<bool> resetPending = false; // set by the window for the audio thread
    std::atomic<unsigned> settled = 0;        // counts what settle stored
    std::atomic<unsigned> shiftWrites = 0;    // how often the trigger shift was written
    unsigned appliedShiftWrites = 0;          // [audio thread] of these
    long triggerShiftSamples = 0;             // [audio thread] earlier if positive
    Orbel::BPMTimeContext timeContext; // the tempo in force, the time base, and what texts of times depend on

    Core::CStringBufferd<Orbel::kParameterTextSize> presetName;
    Orbel::CPresetStore presetStore; // its id is that of a preset from the start
    int presetType = hostState;
    std::optional<float> timeBaseOfBank; // of the bank's preset, until finishBankLoad
    std::string factoryBank;             // the image of a bank file, once the library is there
    std::unique_ptr<Single_CPresetInterface> presetInterface;
    std::string presetFolder;                    // empty until it is asked for
    Orbel::ParameterProperty presetNameProperty; // a text, the preset's name: its listeners hear of a new one
};
