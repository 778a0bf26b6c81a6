// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/OrbelOS.h"

#include "Orbel/contract/ISamplerEffect.h"
#include "Orbel/contract/TransportHelpers.h"
#include "Orbel/parameters/ParameterProperty.h"

#include <algorithm>

namespace Orbel
{
Core::Relaxed<AutomationSyncResolution> gAutomationSync = automationSyncOff;

OrbelOS::OrbelOS(OrbelCallback* hostCallback) : callback(hostCallback) {}

OrbelOS::~OrbelOS() = default;

int OrbelOS::getAutomationIndex(ParameterProperty* property)
{
    if (!property)
        return -1;
    for (int i = 0; i < getParameterCount(); ++i)
    {
        const ParameterProperty* other = getParameterProperty_automateable(i);
        if (other && other->getParameterID() == property->getParameterID())
            return i;
    }
    return -1;
}

void OrbelOS::setOutputLatency(int samples)
{
    outputLatency = samples;
    if (callback)
        callback->CB_setOutputLatency(samples);
}

void OrbelOS::beginEdit(ParameterProperty* property)
{
    if (callback && property && property->isAutomateable())
        callback->CB_beginEdit(getAutomationIndex(property));
}

void OrbelOS::endEdit(ParameterProperty* property)
{
    if (!callback || !property)
        return;
    if (property->isAutomateable())
        callback->CB_endEdit(getAutomationIndex(property));
    else
        callback->CB_stateChanged();
}

void OrbelOS::performEdit(ParameterProperty* property)
{
    if (callback && property && property->isAutomateable())
        callback->CB_performEdit(getAutomationIndex(property), property->getCurrentValue_normalized());
}

void OrbelOS::setBypass(bool on)
{
    bypass = on;
    if (on)
        suspend();
    else
        resume();
}

void OrbelOS::setNumInputBuses(int buses)
{
    numInputBuses = buses;
    if (callback)
        callback->CB_setNumStereoInputs(2 * buses);
}

void OrbelOS::setNumOutputBuses(int buses)
{
    numOutputBuses = buses;
    if (callback)
        callback->CB_setNumStereoOutputs(2 * buses);
}

const char* OrbelOS::getHostedPluginType() const
{
    static constexpr const char* type_strings[] = {"-", "VST2", "VST3", "RTAS", "AU", "AAX", "Orbel"};
    if (!callback)
        return "NO_CALLBACK";
    const int type = callback->CB_getHostedPluginType();
    return type >= 0 && type < int(std::size(type_strings)) ? type_strings[type] : "";
}

void OrbelOS::processMidiEventList(std::vector<OrbelMidiEvent>& events)
{
    for (size_t i = 0; i < events.size(); ++i)
    {
        events[i].completeFromBytes();
        if (events[i].eventType != OrbelMidiEvent::allNotesOff)
            continue;
        for (size_t j = 0; j < i; ++j) // ahead of what happens at the same instant
            if (events[j].sampleOffset == events[i].sampleOffset)
                std::swap(events[j], events[i]);
    }
    for (OrbelMidiEvent& event : events)
        processMidiEvent(&event);
}

// Timed parameter values.

bool OrbelOS::addSyncParameterSetEvent(ParameterProperty* property, float normalized, int sampleOffset)
{
    if (property)
        timedValues.add(*property, normalized, sampleOffset);
    return getAutomationSyncResoltution() != automationSyncOff;
}

void OrbelOS::noteBlock(const CHostTimeInfo& timeInfo, int frames)
{
    blockTempo = timeInfo.tempo;
    blockFrames = frames;
}

void OrbelOS::prepareSyncParameterSet(CHostTimeInfo& timeInfo, int frames)
{
    audioSection.checkAudioThread("OrbelOS::prepareSyncParameterSet");
    noteBlock(timeInfo, frames);
    timedValues.beginBlock();
    const TimedValues::Access list = timedValues.list();
    if (!list || list->getNumEvents() == 0)
        return;
    const AutomationSyncResolution resolution = getAutomationSyncResoltution();
    if (resolution == automationSyncOff)
        return list->keepWithin(frames);
    list->delayTo(samplesToGrid(timeInfo, frames, resolution));
}

// To the next line of the grid in this block; 0 where none falls into it or nothing plays.
long OrbelOS::samplesToGrid(const CHostTimeInfo& timeInfo, int frames, AutomationSyncResolution resolution)
{
    using namespace Helpers;
    static constexpr eBeatResolution table[] = {thirtySecondNote, sixteenthNote, eighthNote, wholeNote};

    const auto grid = table[std::clamp<int>(resolution, automationSync32nd, automationSyncWhole)];
    const long next = getSamplesToNexBeat(timeInfo.samplePosition, timeInfo.tempo, getSampleRate(), grid);
    return next > frames || !timeInfo.playing ? 0 : std::max(next, 0L);
}

void OrbelOS::syncSetParameters(int& frames)
{
    audioSection.checkAudioThread("OrbelOS::syncSetParameters");
    const TimedValues::Access list = timedValues.list();
    if (!list || list->getNumEvents() == 0)
        return;

    frames = std::max(list->lengthOfPiece(frames), 1); // what is due at once begins a piece of one sample
    for (int i = list->getNumEvents() - 1; i >= 0; --i)
        if (list->isDue(i))
        {
            write(*list->getEvent(i));
            list->getEvent(i)->property = nullptr; // only now: what the write adds for it is dropped with it
        }
    list->advance(frames);
}

void OrbelOS::write(ParameterSetEvent event)
{
    if (!setParameterByAutomation(int(event.property->getParameterID()), event.normalized))
        event.property->setValue(event.value);
}

ISamplerEffect* getSamplerInterface(OrbelOS* effect)
{
    return dynamic_cast<ISamplerEffect*>(effect);
}
}
