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

bool OrbelOS::getProgramName(char* text)
{
    *text = 0;
    return false;
}

ParameterProperty* OrbelOS::getParameterProperty_automateable(int index)
{
    return getParameterProperty(index);
}

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

void OrbelOS::reset()
{
    suspend();
    resume();
}

void OrbelOS::beginEdit(int index)
{
    if (callback)
        callback->CB_beginEdit(index);
}

void OrbelOS::endEdit(int index)
{
    if (callback)
        callback->CB_endEdit(index);
}

void OrbelOS::performEdit(int index, float normalized)
{
    if (callback)
        callback->CB_performEdit(index, normalized);
}

void OrbelOS::beginEdit(ParameterProperty* property)
{
    if (callback && property && property->isAutomateable())
        callback->CB_beginEdit(getAutomationIndex(property));
}

void OrbelOS::endEdit(ParameterProperty* property)
{
    if (callback && property && property->isAutomateable())
        callback->CB_endEdit(getAutomationIndex(property));
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

void OrbelOS::giveHostIdleTime()
{
    if (callback)
        callback->CB_giveHostIdleTime();
}

float OrbelOS::getCurrentHostTempo()
{
    return callback ? callback->CB_getHostTempo() : 10.0f;
}

const char* OrbelOS::getHostedPluginType() const
{
    static constexpr const char* type_strings[] = {"-", "VST2", "VST3", "RTAS", "AU", "AAX", "Orbel"};
    if (!callback)
        return "NO_CALLBACK";
    const int type = callback->CB_getHostedPluginType();
    return type >= 0 && type < int(std::size(type_strings)) ? type_strings[type] : "";
}

void OrbelOS::setAutomationSyncResolution(AutomationSyncResolution resolution)
{
    gAutomationSync = resolution;
}

AutomationSyncResolution OrbelOS::getAutomationSyncResoltution() const
{
    return gAutomationSync;
}

// Fields of a MIDI event from its raw bytes.

static void noteOffForSilentNote(OrbelMidiEvent& event)
{
    if (event.velocity != 0.0f)
        return;
    event.eventType = OrbelMidiEvent::noteOff;
    event.raw[0] = OrbelMidiEvent::noteOff;
}

static void channelModeForController(OrbelMidiEvent& event)
{
    if (event.controller == 123)
        event.eventType = OrbelMidiEvent::allNotesOff;
    else if (event.controller == 120)
        event.eventType = OrbelMidiEvent::allSoundOff;
}

// -1 to a little above 1. The two sides are scaled apart, so that both reach their full range; the one
// step beside the centre counts as the centre.
static float pitchBendValue(const OrbelMidiEvent& event)
{
    const float steps = float(event.raw[2] * 128 + event.raw[1] - 8192);
    if (steps > -2.0f && steps < 2.0f)
        return 0.0f;
    return steps > 0.0f ? steps / 8152.0f : steps * 0.00012207031f;
}

static void completeFromRawBytes(OrbelMidiEvent& event)
{
    const int message = event.raw[0] & 0xF0;
    const int number = event.raw[1] & 127;
    const float amount = float(event.raw[2] & 127) / 127.0f;
    event.channel = event.raw[0] & 0x0F;

    switch (message)
    {
    case OrbelMidiEvent::noteOn:
    case OrbelMidiEvent::noteOff:
        event.eventType = message;
        event.noteNumber = number;
        event.velocity = amount;
        break;
    case OrbelMidiEvent::pitchBend:
        event.eventType = message;
        event.value = pitchBendValue(event);
        break;
    case OrbelMidiEvent::controlChange:
        event.eventType = message;
        event.controller = number;
        event.value = amount;
        break;
    default: // the adapter may have set the type
        break;
    }
    if (event.eventType == OrbelMidiEvent::noteOn)
        noteOffForSilentNote(event);
    else if (event.eventType == OrbelMidiEvent::controlChange)
        channelModeForController(event);
}

void OrbelOS::processMidiEventList(std::vector<OrbelMidiEvent>& events)
{
    for (size_t i = 0; i < events.size(); ++i)
    {
        completeFromRawBytes(events[i]);
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
        parameterEvents.addEvent(
            {sampleOffset, float(property->denormalize(normalized)), normalized, property});
    return getAutomationSyncResoltution() != automationSyncOff;
}

void OrbelOS::prepareSyncParameterSet(CHostTimeInfo& timeInfo, int frames)
{
    using namespace Helpers;
    static constexpr eBeatResolution table[] = {thirtySecondNote, sixteenthNote, eighthNote, wholeNote};

    const AutomationSyncResolution resolution = getAutomationSyncResoltution();
    if (resolution == automationSyncOff)
    {
        for (int i = parameterEvents.getNumEvents() - 1; i >= 0; --i)
        {
            ParameterSetEvent& event = *parameterEvents.getEvent(i);
            event.sampleOffset = std::min<long>(event.sampleOffset, frames - 1);
        }
        return;
    }
    if (parameterEvents.getNumEvents() == 0)
        return;

    const auto grid = table[std::clamp<int>(resolution, automationSync32nd, automationSyncWhole)];
    long next = getSamplesToNexBeat(timeInfo.samplePosition, timeInfo.tempo, getSampleRate(), grid);
    if (next > frames || !timeInfo.playing)
        next = 0;
    for (int i = 0; i < parameterEvents.getNumEvents(); ++i)
        parameterEvents.getEvent(i)->sampleOffset = std::max(next, 0L);
}

void OrbelOS::syncSetParameters(int& frames)
{
    const int count = parameterEvents.getNumEvents();
    if (count == 0)
        return;

    for (int i = count - 1; i >= 0; --i)
    {
        const ParameterSetEvent& event = *parameterEvents.getEvent(i);
        if (event.property && event.sampleOffset >= 0 && event.sampleOffset < frames)
            frames = int(event.sampleOffset);
    }
    frames = std::max(frames, 1); // what is due at once stands before a piece of one sample

    applyDueEvents();
    for (int i = 0; i < count; ++i)
        parameterEvents.getEvent(i)->sampleOffset -= frames;
}

void OrbelOS::applyDueEvents()
{
    for (int i = parameterEvents.getNumEvents() - 1; i >= 0; --i)
    {
        ParameterSetEvent& event = *parameterEvents.getEvent(i);
        if (!event.property || event.sampleOffset > 0)
            continue;
        if (!setParameterByAutomation(int(event.property->getParameterID()), event.normalized))
            event.property->setValue(event.value);
        event.property = nullptr;
    }
}

void OrbelOS::clearSyncSetEvents()
{
    parameterEvents.clear(true);
}

ISamplerEffect* getSamplerInterface(OrbelOS* effect)
{
    return dynamic_cast<ISamplerEffect*>(effect);
}
}
