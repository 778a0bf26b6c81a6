// The effect: ducks a stereo bus on every beat of the host, or on another note value.
//
// Host adapters make it and drive it through OrbelOS. Each block it reads the host's musical position,
// works out how many samples lie ahead of the next trigger, arms the ducker, delays the audio by the
// length of the ducker's pre-fade, and ducks it:
//
//     input -> busPreDuck -> delay -> busOutput -> CBusSidechainFx -> output
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
#include "Orbel/CPropertyManager.h"
#include "Orbel/ISamplerEffect.h"
#include "Orbel/OrbelOS.h"
#include "Orbel/ParameterProperty.h"
#include "Orbel/ParameterText.h"
#include "effect/CBusSidechainFx.h"
#include "effect/IEffectEditor.h"
#include "effect/StereoDelayLine.h"

class CQDT_DKS_Single : public Orbel::OrbelOS, public Orbel::ISamplerEffect
{
public:
    // hostCallback is not owned and may be null. The effect is complete: it can process once setBlockSize
    // ran.
    explicit CQDT_DKS_Single(Orbel::OrbelCallback* hostCallback);
    ~CQDT_DKS_Single() override;

    // [any thread]
    void parameterChanged(Orbel::ParameterProperty* property) override;

    // Hosts see the ten automatable parameters, by index; lookups by id go over all fifteen.
    int getParameterCount() override;
    Orbel::ParameterProperty* getParameterProperty(int index) override;
    Orbel::ParameterProperty* getParameterProperty_automateable(int index) override;
    Orbel::ParameterProperty* getParameterPropertyByID(int id) override;
    Orbel::ParameterProperty* getParameterProperty(const char* idText) override;

    // There is one program, whatever the index: the preset that is loaded. Names in, without the number
    // that a preset file's name begins with; names out, of at most 28 characters.
    void setProgram(int) override {}
    void setProgramName(const char* name) override { setPresetName(name); }
    bool getProgramName(char* text) override;
    bool getProgramNameIndexed(int, char* text) override { return getProgramName(text); }
    void setPresetName(const char* name);

    // [audio stopped] Hertz above 0, and samples. What is not above 0 is not taken.
    void setSampleRate(float rate) override;
    void setBlockSize(long samples) override;
    // [audio stopped] Clears audio, envelope and countdowns; parameters stay.
    void reset() override;

    // [audio thread] The first input bus to the first output bus, which may share memory. A block above the
    // announced size is worked all the same, but allocates. Bypassed, the audio is still delayed, and all
    // countdowns stand.
    void processAudio(Orbel::AudioBusInformation& info) override;

    // [any thread] The interval between triggers in beats: one of gTimeAdjustMultiplier.
    void setTimeAdjust(float beats);
    float getTimeAdjust() const { return timeAdjust; }

    // [any thread] Moves the three envelope times so that their sum stays, after parameter id changed; with
    // an id of -1 it only writes them again. Ends a time of loading.
    void updateEnvelopeTimes(int id);

    // [audio thread] For each sample of the last block 1 - 2 x gain, as CBusSidechainFx writes it; -1 while
    // bypassed. Null before setBlockSize.
    const float* getGainRecord() const { return busGainRecord.left; }

    // [window thread] The editor's window; without an editor nothing happens.
    void getEditorSize(Tovra::CRect& rectangle) override;
    void open_editor(void* parentWindow) override;
    void close_editor() override;

private:
    static constexpr int numLinkedValues = 7; // parameter ids 0 to 6

    void createProperties();
    void createEditor();
    void setDefaults();
    void notifyTimes();

    void updateClickFilter();
    void updateTempo(float tempo);
    void storeDuckerValue(int duckerParameter, const Orbel::ParameterProperty& property);
    void linkToAttack(float attack, float& hold, float& release);
    void shortenRelease(float& release, float by);

    void reserveBlock(long frames);
    void takeTempo(float hostTempo);
    long samplesToTrigger(const Orbel::CHostTimeInfo& time);
    void armTrigger(const Orbel::CHostTimeInfo& time);
    void duck(Orbel::AudioBusInformation& info);
    void passThrough(Orbel::AudioBusInformation& info);

    IEffectEditor* editorRef = nullptr; // the same object as the base's editor, or null
    Orbel::CPropertyManager propertyManager;
    CBusSidechainFx ducker;
    StereoDelayLine delayLine;
    cpuControl cpuMode;

    Orbel::AudioStereoBus busPreDuck; // the input after the delay
    Orbel::AudioStereoBus busOutput;  // the result, ducked in place
    Orbel::AudioStereoBus busGainRecord;

    Core::Relaxed<bool> linkTimes = true;
    Core::Relaxed<bool> loading = false;                            // parameter changes don't move each other
    Core::Relaxed<float> lastParameterValues[numLinkedValues] = {}; // after each change's compensation
    Core::Relaxed<long> clickFilterSamples = 200;                   // pre-fade length at 44100 Hz
    Core::Relaxed<float> triggerShift = 0.0f;                       // half beats, earlier if positive
    Core::Relaxed<long> triggerShiftSamples = 0;
    Core::Relaxed<float> timeAdjust = 1.0f; // interval between triggers in beats
    Orbel::BPMTimeContext timeContext;      // what the texts of the times depend on, and the tempo in force

    Core::CStringBufferd<Orbel::kParameterTextSize> presetName;
    Orbel::ParameterProperty presetNameProperty; // a text, the preset's name: its listeners hear of a new one
};
