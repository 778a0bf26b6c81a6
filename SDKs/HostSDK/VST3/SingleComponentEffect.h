// SPDX-License-Identifier: GPL-3.0-or-later
// Processor and controller in one object: the base of an adapter that has no second half to talk to.
//
// It keeps the buses and the set-up of processing; an adapter adds its buses in initialize. Answers are
// those of the interface: kResultFalse for what is refused, kInvalidArgument for an argument that names
// nothing. Before initialize and after terminate there are no buses.
//
// Threads, as the interface has them: process on the audio thread, setupProcessing and setActive while it
// stands, all else on the window thread.
#pragma once

#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivstcomponent.h"
#include "public.sdk/source/vst/vstbus.h"
#include "public.sdk/source/vst/vsteditcontroller.h"

namespace Steinberg::Vst
{
class SingleComponentEffect : public EditController, public IComponent, public IAudioProcessor
{
public:
    // IPluginBase. A second initialize without a terminate is refused.
    tresult PLUGIN_API initialize(FUnknown* context) override;
    tresult PLUGIN_API terminate() override;

    // IEditController. An index beyond the list is refused; the base would throw.
    tresult PLUGIN_API getParameterInfo(int32 index, ParameterInfo& info) override;

    // IComponent
    tresult PLUGIN_API getControllerClassId(TUID) override { return kNotImplemented; }
    tresult PLUGIN_API setIoMode(IoMode) override { return kNotImplemented; }
    int32 PLUGIN_API getBusCount(MediaType type, BusDirection direction) override;
    tresult PLUGIN_API getBusInfo(MediaType type, BusDirection direction, int32 index,
                                  BusInfo& info) override;
    tresult PLUGIN_API getRoutingInfo(RoutingInfo&, RoutingInfo&) override { return kNotImplemented; }
    tresult PLUGIN_API activateBus(MediaType type, BusDirection direction, int32 index, TBool state) override;
    tresult PLUGIN_API setActive(TBool) override { return kResultOk; }
    tresult PLUGIN_API setState(IBStream*) override { return kNotImplemented; }
    tresult PLUGIN_API getState(IBStream*) override { return kNotImplemented; }

    // IAudioProcessor. Each bus takes any arrangement of at most two channels. If one of the arrangements has
    // more, all are refused and nothing changes. Buses beyond the given number stay as they are.
    tresult PLUGIN_API setBusArrangements(SpeakerArrangement* inputs, int32 numInputs,
                                          SpeakerArrangement* outputs, int32 numOutputs) override;
    tresult PLUGIN_API getBusArrangement(BusDirection direction, int32 index,
                                         SpeakerArrangement& arrangement) override;
    tresult PLUGIN_API canProcessSampleSize(int32 size) override;
    uint32 PLUGIN_API getLatencySamples() override { return 0; }
    tresult PLUGIN_API setupProcessing(ProcessSetup& setup) override;
    tresult PLUGIN_API setProcessing(TBool) override { return kResultOk; }
    tresult PLUGIN_API process(ProcessData&) override { return kNotImplemented; }
    uint32 PLUGIN_API getTailSamples() override { return kNoTail; }

    OBJ_METHODS(SingleComponentEffect, EditController)
    tresult PLUGIN_API queryInterface(const TUID interfaceID, void** object) override;
    REFCOUNT_METHODS(EditController)

protected:
    void addAudioInput(const char* name, BusType type);
    void addAudioOutput(const char* name);
    void addEventInput(const char* name, int32 channels);

    const ProcessSetup& getProcessSetup() const { return processSetup; }

private:
    BusList* busesOf(MediaType type, BusDirection direction);
    Bus* findBus(MediaType type, BusDirection direction, int32 index);

    bool initialized = false;
    BusList audioInputs{kAudio, kInput};
    BusList audioOutputs{kAudio, kOutput};
    BusList eventInputs{kEvent, kInput};
    BusList eventOutputs{kEvent, kOutput};
    ProcessSetup processSetup{kRealtime, kSample32, 1024, 44100.0};
};
}
