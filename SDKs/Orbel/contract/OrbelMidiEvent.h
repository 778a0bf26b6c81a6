// One MIDI event of a block.
#pragma once

#include <cstdint>

namespace Orbel
{
struct OrbelMidiEvent
{
    enum Type : int32_t
    {
        noteOff = 128,
        noteOn = 144,
        controlChange = 176,
        pitchBend = 224,
        allNotesOff = 65281,
        allSoundOff = 65282
    };

    int32_t sampleOffset = 0; // in the block
    uint8_t raw[4] = {};      // status, two data bytes, one spare
    int32_t noteNumber = 0;   // 0 to 127
    int32_t eventType = 0;    // a Type
    float velocity = 0.0f;    // 0 to 1
    float value = 0.0f;       // controller 0 to 1, pitch bend about -1 to 1
    int32_t controller = 0;
    uint8_t channel = 0; // 0 to 15
};
}
