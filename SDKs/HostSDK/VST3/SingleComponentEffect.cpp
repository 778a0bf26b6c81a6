// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostSDK/VST3/SingleComponentEffect.h"

#include "HostSDK/VST3/Text.h"

namespace Steinberg::Vst
{
static constexpr int32 mostChannels = 2; // of a bus

tresult PLUGIN_API SingleComponentEffect::initialize(FUnknown* context)
{
    if (initialized)
        return kResultFalse;
    const tresult result = EditController::initialize(context);
    initialized = result == kResultOk;
    return result;
}

tresult PLUGIN_API SingleComponentEffect::terminate()
{
    for (BusList* buses : {&audioInputs, &audioOutputs, &eventInputs, &eventOutputs})
        buses->clear();
    initialized = false;
    return EditController::terminate();
}

tresult PLUGIN_API SingleComponentEffect::getParameterInfo(int32 index, ParameterInfo& info)
{
    const bool there = index >= 0 && index < parameters.getParameterCount();
    return there ? EditController::getParameterInfo(index, info) : kInvalidArgument;
}

BusList* SingleComponentEffect::busesOf(MediaType type, BusDirection direction)
{
    const bool in = direction == kInput;
    if ((type != kAudio && type != kEvent) || (!in && direction != kOutput))
        return nullptr;
    if (type == kAudio)
        return in ? &audioInputs : &audioOutputs;
    return in ? &eventInputs : &eventOutputs;
}

Bus* SingleComponentEffect::findBus(MediaType type, BusDirection direction, int32 index)
{
    BusList* const buses = busesOf(type, direction);
    return buses && index >= 0 && size_t(index) < buses->size() ? (*buses)[size_t(index)].get() : nullptr;
}

int32 PLUGIN_API SingleComponentEffect::getBusCount(MediaType type, BusDirection direction)
{
    const BusList* const buses = busesOf(type, direction);
    return buses ? int32(buses->size()) : 0;
}

tresult PLUGIN_API SingleComponentEffect::getBusInfo(MediaType type, BusDirection direction, int32 index,
                                                     BusInfo& info)
{
    Bus* const bus = findBus(type, direction, index);
    if (!bus)
        return kInvalidArgument;
    info.mediaType = type;
    info.direction = direction;
    return bus->getInfo(info) ? kResultTrue : kResultFalse;
}

tresult PLUGIN_API SingleComponentEffect::activateBus(MediaType type, BusDirection direction, int32 index,
                                                      TBool state)
{
    Bus* const bus = findBus(type, direction, index);
    if (!bus)
        return kInvalidArgument;
    bus->setActive(state);
    return kResultTrue;
}

static bool fits(const BusList& buses, const SpeakerArrangement* arrangements, int32 count)
{
    if (count > int32(buses.size()) || (count > 0 && !arrangements))
        return false;
    for (int32 i = 0; i < count; ++i)
        if (SpeakerArr::getChannelCount(arrangements[i]) > mostChannels)
            return false;
    return true;
}

static void arrange(BusList& buses, const SpeakerArrangement* arrangements, int32 count)
{
    for (int32 i = 0; i < count; ++i)
        static_cast<AudioBus*>(buses[size_t(i)].get())->setArrangement(arrangements[i]);
}

tresult PLUGIN_API SingleComponentEffect::setBusArrangements(SpeakerArrangement* inputs, int32 numInputs,
                                                             SpeakerArrangement* outputs, int32 numOutputs)
{
    if (numInputs < 0 || numOutputs < 0)
        return kInvalidArgument;
    if (!fits(audioInputs, inputs, numInputs) || !fits(audioOutputs, outputs, numOutputs))
        return kResultFalse;
    arrange(audioInputs, inputs, numInputs);
    arrange(audioOutputs, outputs, numOutputs);
    return kResultTrue;
}

tresult PLUGIN_API SingleComponentEffect::getBusArrangement(BusDirection direction, int32 index,
                                                            SpeakerArrangement& arrangement)
{
    Bus* const bus = findBus(kAudio, direction, index);
    if (!bus)
        return kInvalidArgument;
    arrangement = static_cast<AudioBus*>(bus)->getArrangement();
    return kResultTrue;
}

tresult PLUGIN_API SingleComponentEffect::canProcessSampleSize(int32 size)
{
    return size == kSample32 ? kResultTrue : kResultFalse;
}

tresult PLUGIN_API SingleComponentEffect::setupProcessing(ProcessSetup& setup)
{
    if (canProcessSampleSize(setup.symbolicSampleSize) != kResultTrue)
        return kResultFalse;
    processSetup = setup;
    return kResultOk;
}

// Makes a bus of the interface's class Made; the arguments are those of its constructor after the flags.
template <typename Made, typename... Arguments>
static void addBus(BusList& buses, const char* name, BusType type, Arguments... arguments)
{
    String128 text;
    copyText(name, text);
    buses.push_back(owned(static_cast<Bus*>(new Made(text, type, BusInfo::kDefaultActive, arguments...))));
}

void SingleComponentEffect::addAudioInput(const char* name, BusType type)
{
    addBus<AudioBus>(audioInputs, name, type, SpeakerArr::kStereo);
}

void SingleComponentEffect::addAudioOutput(const char* name)
{
    addBus<AudioBus>(audioOutputs, name, kMain, SpeakerArr::kStereo);
}

void SingleComponentEffect::addEventInput(const char* name, int32 channels)
{
    addBus<EventBus>(eventInputs, name, kMain, channels);
}

tresult PLUGIN_API SingleComponentEffect::queryInterface(const TUID interfaceID, void** object)
{
    if (!object)
        return kInvalidArgument;
    QUERY_INTERFACE(interfaceID, object, IComponent::iid, IComponent)
    QUERY_INTERFACE(interfaceID, object, IAudioProcessor::iid, IAudioProcessor)
    return EditController::queryInterface(interfaceID, object);
}
}
