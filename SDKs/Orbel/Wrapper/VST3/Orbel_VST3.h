// SPDX-License-Identifier: GPL-3.0-or-later
// An effect as a VST 3 plug-in: processor and controller in one object, over the contract OrbelOS.
//
// It translates and does nothing else. The effect works on the host's own channel pointers. Parameters reach
// it on the audio thread, as timed values inside process, and never from the controller's side: a host's
// setParamNormalized only changes the program. The audio and the state are the effect's alone; a host's
// stream holds the bytes of that state after two words.
//
// Made by VST3Factory; then initialize, setupProcessing, setActive, process, terminate, as often as the
// host likes. terminate destroys the effect and initialize makes another one.
//
// Threads: process on the audio thread, where it allocates nothing and takes no lock. setupProcessing and
// setActive come while audio stands. All the rest is the window thread's.
#pragma once

#include "CORE/Relaxed.h"
#include "HostSDK/VST3/SingleComponentEffect.h"
#include "Orbel/contract/OrbelFactory.h"
#include "Orbel/parameters/ParameterProperty.h"
#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstmidicontrollers.h"
#include "pluginterfaces/vst/ivstparameterchanges.h"
#include "pluginterfaces/vst/ivstunits.h"

#include <memory>
#include <vector>

namespace Orbel
{
class BlockRoad;
class OrbelVST3Parameter;
class Orbel_VST3_EditorView;

class Orbel_VST3 : public Steinberg::Vst::SingleComponentEffect,
                   public Steinberg::Vst::IUnitInfo,
                   public Steinberg::Vst::IProgramListData,
                   public Steinberg::Vst::IMidiMapping,
                   public OrbelCallback
{
public:
    using FIDString = Steinberg::FIDString;
    using FUnknown = Steinberg::FUnknown;
    using IBStream = Steinberg::IBStream;
    using IPlugView = Steinberg::IPlugView;
    using TBool = Steinberg::TBool;
    using TUID = Steinberg::TUID;
    using int16 = Steinberg::int16;
    using int32 = Steinberg::int32;
    using tresult = Steinberg::tresult;
    using uint32 = Steinberg::uint32;
    using BusDirection = Steinberg::Vst::BusDirection;
    using CtrlNumber = Steinberg::Vst::CtrlNumber;
    using MediaType = Steinberg::Vst::MediaType;
    using ParamID = Steinberg::Vst::ParamID;
    using ParamValue = Steinberg::Vst::ParamValue;
    using ProgramListID = Steinberg::Vst::ProgramListID;
    using String128 = Steinberg::Vst::String128;
    using TChar = Steinberg::Vst::TChar;
    using UnitID = Steinberg::Vst::UnitID;

    static constexpr ParamID kProgramList = 'P' << 24 | 'l' << 16 | 's' << 8 | 't'; // of list and parameter
    static constexpr ParamID kOwnBypass = 'M' << 24 | 'B' << 16 | 'y' << 8 | 'p';

    // Makes the effect that the description names.
    explicit Orbel_VST3(const OrbelFX_Description& description);
    ~Orbel_VST3() override;

    tresult PLUGIN_API queryInterface(const TUID interfaceID, void** object) override;
    REFCOUNT_METHODS(SingleComponentEffect)

    // Component and controller
    tresult PLUGIN_API initialize(FUnknown* context) override;
    tresult PLUGIN_API terminate() override;
    tresult PLUGIN_API setActive(TBool state) override;
    // A stream is two 32-bit words, the size and the program, followed by that many bytes of the effect's
    // state. From a stream that ends within those bytes only the program is taken.
    tresult PLUGIN_API setState(IBStream* stream) override;
    tresult PLUGIN_API getState(IBStream* stream) override;
    tresult PLUGIN_API setComponentState(IBStream* stream) override { return setState(stream); }
    ParamValue PLUGIN_API getParamNormalized(ParamID id) override;
    tresult PLUGIN_API setParamNormalized(ParamID id, ParamValue position) override;
    // Null if the effect has no editor.
    IPlugView* PLUGIN_API createView(FIDString name) override;

    // Processor
    uint32 PLUGIN_API getLatencySamples() override { return uint32(latencySamples.load()); }
    // 64-bit samples, rates that are not above 0 and sizes beyond reason are refused, and nothing changes.
    tresult PLUGIN_API setupProcessing(Steinberg::Vst::ProcessSetup& setup) override;
    // A block that is longer than announced or of 64-bit samples is refused as a whole: kResultFalse, and
    // neither its audio nor its events are looked at.
    tresult PLUGIN_API process(Steinberg::Vst::ProcessData& data) override;
    // Long enough that no host cuts a release.
    uint32 PLUGIN_API getTailSamples() override { return 576000000; }

    // IUnitInfo: one unit, with as many programs as the description says.
    int32 PLUGIN_API getUnitCount() override { return int32(units.size()); }
    tresult PLUGIN_API getUnitInfo(int32 index, Steinberg::Vst::UnitInfo& info) override;
    int32 PLUGIN_API getProgramListCount() override { return hasPrograms() ? 1 : 0; }
    tresult PLUGIN_API getProgramListInfo(int32 index, Steinberg::Vst::ProgramListInfo& info) override;
    tresult PLUGIN_API getProgramName(ProgramListID list, int32 index, String128 name) override;
    tresult PLUGIN_API getProgramInfo(ProgramListID list, int32 index, FIDString attribute,
                                      String128 value) override;
    tresult PLUGIN_API hasProgramPitchNames(ProgramListID, int32) override { return Steinberg::kResultFalse; }
    tresult PLUGIN_API getProgramPitchName(ProgramListID, int32, int16, String128) override
    {
        return Steinberg::kResultFalse;
    }
    UnitID PLUGIN_API getSelectedUnit() override { return selectedUnit; }
    tresult PLUGIN_API selectUnit(UnitID unit) override;
    tresult PLUGIN_API getUnitByBus(MediaType, BusDirection, int32, int32, UnitID&) override
    {
        return Steinberg::kResultFalse;
    }
    tresult PLUGIN_API setUnitProgramData(int32, int32, IBStream*) override
    {
        return Steinberg::kResultFalse;
    }

    // IProgramListData: said to be supported, but no program's data is ever moved this way.
    tresult PLUGIN_API programDataSupported(ProgramListID) override { return Steinberg::kResultOk; }
    tresult PLUGIN_API getProgramData(ProgramListID, int32, IBStream*) override
    {
        return Steinberg::kResultFalse;
    }
    tresult PLUGIN_API setProgramData(ProgramListID, int32, IBStream*) override
    {
        return Steinberg::kResultFalse;
    }

    // IMidiMapping: if the effect takes MIDI, each controller of each channel is a hidden parameter.
    tresult PLUGIN_API getMidiControllerAssignment(int32 bus, int16 channel, CtrlNumber controller,
                                                   ParamID& id) override;

    // OrbelCallback: what the effect asks of its host. Indices are automation indices, which are the ids of
    // the parameters.
    bool CB_updateHostDisplay() override;
    bool CB_ioChanged() override;
    bool CB_setOutputLatency(int samples) override;
    bool CB_beginEdit(int index) override;
    bool CB_endEdit(int index) override;
    void CB_performEdit(int index, float position) override;
    void CB_stateChanged() override;
    float CB_getHostTempo() override { return currentTempo; }
    int CB_getHostedPluginType() const override { return 2; }
    void CB_parameterInfoChanged(const char*) override;

    // For its views: one is about to be destroyed, and whether any of them is attached.
    void forgetView(Orbel_VST3_EditorView* view);
    bool isEditorOpen() const;

private:
    static constexpr int controllersPerChannel = 130; // 128, pressure and pitch bend
    static constexpr int midiChannels = 16;
    static constexpr ParamID firstController = 'C' << 24 | '0' << 16 | '0' << 8 | '0';

    bool hasPrograms() const { return description.numPrograms > 1; }
    bool takesMidi() const { return description.type != OrbelFX_Description::effect; }
    void addBuses();
    void addParameters();
    void addControllerParameters();
    OrbelVST3Parameter* findParameter(ParamID id) const;
    bool restart(int32 flags);

    void takeParameterChanges(Steinberg::Vst::IParameterChanges& changes);
    void takeParameterChange(ParamID id, int32 sampleOffset, ParamValue position);
    void takeController(ParamID id, int32 sampleOffset, ParamValue position);
    void takeEvents(Steinberg::Vst::IEventList& events);
    void takeEvent(const Steinberg::Vst::Event& event);
    void addMidi(const OrbelMidiEvent& event);
    void processMidi();
    void processAudio(Steinberg::Vst::ProcessData& data, BlockRoad& road);

    const OrbelFX_Description description;
    std::vector<Orbel_VST3_EditorView*> views;
    std::vector<Steinberg::Vst::UnitInfo> units;
    UnitID selectedUnit = 0;
    ParameterProperty programProperty; // a host's program change, outside the effect's parameters
    ParamID bypassParameterId = kOwnBypass;
    std::vector<OrbelMidiEvent> pendingMidi; // of the block that is processed
    std::vector<float> silence; // as long as the largest block; stands in for channels that the host lacks

    Core::Relaxed<long> latencySamples = 0;
    Core::Relaxed<float> currentTempo = 10.0f; // written by the audio thread

    // The last member, because it uses the others from its constructor on. Null after terminate.
    std::unique_ptr<OrbelOS> effect;
};
}
