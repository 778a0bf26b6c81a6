// SPDX-License-Identifier: GPL-3.0-or-later
// A host's notes and controllers as MIDI events. [audio thread] throughout.
#include "CORE/Truncate.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3.h"

namespace Orbel
{
using namespace Steinberg;
using namespace Steinberg::Vst;

// Pressure has no status of its own here. Pitch bend is 14 bits, the low seven first.
void Orbel_VST3::takeController(ParamID id, int32 sampleOffset, ParamValue position)
{
    const int number = int(id - firstController);
    const int controller = number % controllersPerChannel;
    OrbelMidiEvent event;
    event.sampleOffset = sampleOffset;
    event.channel = std::uint8_t(number / controllersPerChannel);
    if (controller == kPitchBend)
    {
        const int bend = Core::truncate<int>(position * 16383.0);
        event.raw[0] = std::uint8_t(0xE0 | event.channel);
        event.raw[1] = bend & 127;
        event.raw[2] = bend >> 7 & 127;
    }
    else if (controller != kAfterTouch)
    {
        event.raw[0] = std::uint8_t(0xB0 | event.channel);
        event.raw[1] = std::uint8_t(controller);
        event.raw[2] = std::uint8_t(Core::truncate<int>(position * 127.0));
    }
    addMidi(event);
}

static OrbelMidiEvent noteOf(int type, int32 sampleOffset, int16 channel, int16 pitch, float velocity)
{
    OrbelMidiEvent event;
    event.sampleOffset = sampleOffset;
    event.channel = std::uint8_t(channel);
    event.noteNumber = pitch;
    event.eventType = type;
    event.velocity = velocity;
    event.raw[0] = std::uint8_t(type | channel);
    event.raw[1] = std::uint8_t(pitch);
    event.raw[2] = Core::truncate<int>(velocity * 127.0f) & 127;
    return event;
}

// Events of other kinds are left out: the framework has no form for them.
void Orbel_VST3::takeEvent(const Event& event)
{
    const int32 offset = event.sampleOffset;
    const NoteOnEvent& on = event.noteOn;
    const NoteOffEvent& off = event.noteOff;
    switch (event.type)
    {
    case Event::kNoteOnEvent:
        return addMidi(noteOf(OrbelMidiEvent::noteOn, offset, on.channel, on.pitch, on.velocity));
    case Event::kNoteOffEvent:
        return addMidi(noteOf(OrbelMidiEvent::noteOff, offset, off.channel, off.pitch, 0.0f));
    case Event::kDataEvent:
        if (event.data.bytes && event.data.size > 0)
            addMidi(OrbelMidiEvent::fromBytes(offset, event.data.bytes, event.data.size));
        return;
    default:
        return;
    }
}

void Orbel_VST3::takeEvents(IEventList& events)
{
    for (int32 i = 0; i < events.getEventCount(); ++i)
        if (Event event{}; events.getEvent(i, event) == kResultOk)
            takeEvent(event);
}

// More events than there is room for are given to the effect in several lists.
void Orbel_VST3::addMidi(const OrbelMidiEvent& event)
{
    if (pendingMidi.size() == pendingMidi.capacity())
        processMidi();
    pendingMidi.push_back(event);
}

void Orbel_VST3::processMidi()
{
    if (!pendingMidi.empty())
        effect->processMidiEventList(pendingMidi);
    pendingMidi.clear();
}
}
