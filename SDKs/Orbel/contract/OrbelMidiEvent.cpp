// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/OrbelMidiEvent.h"

#include <algorithm>

namespace Orbel
{
constexpr int messageBits = 0xF0; // of a status byte; the others are the channel
constexpr int dataBits = 0x7F;
constexpr float largestData = 127.0f;

OrbelMidiEvent OrbelMidiEvent::fromBytes(int32_t sampleOffset, const uint8_t* bytes, size_t count)
{
    OrbelMidiEvent event;
    event.sampleOffset = sampleOffset;
    std::copy_n(bytes, std::min(count, sizeof event.raw), event.raw);
    event.eventType = event.raw[0] & messageBits;
    return event;
}

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

// -1 to a little above 1. Each side has a scale of its own, so that both reach their full range; a bend of
// a single step counts as none.
static float pitchBendValue(const OrbelMidiEvent& event)
{
    const float steps = float(event.raw[2] * 128 + event.raw[1] - 8192);
    if (steps > -2.0f && steps < 2.0f)
        return 0.0f;
    return steps > 0.0f ? steps / 8152.0f : steps * 0.00012207031f;
}

void OrbelMidiEvent::completeFromBytes()
{
    const int message = raw[0] & messageBits;
    const int number = raw[1] & dataBits;
    const float amount = float(raw[2] & dataBits) / largestData;
    channel = raw[0] & 0x0F;

    switch (message)
    {
    case noteOn:
    case noteOff:
        eventType = message;
        noteNumber = number;
        velocity = amount;
        break;
    case pitchBend:
        eventType = message;
        value = pitchBendValue(*this);
        break;
    case controlChange:
        eventType = message;
        controller = number;
        value = amount;
        break;
    default: // the adapter may have set the type
        break;
    }
    if (eventType == noteOn)
        noteOffForSilentNote(*this);
    else if (eventType == controlChange)
        channelModeForController(*this);
}
}
