// SPDX-License-Identifier: GPL-3.0-or-later
// One MIDI event of a block.
#pragma once

#include <cstddef>
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

    // [any thread]  An event with the raw bytes of a message, of which at most four are taken, and the type
    // that its status names. All other fields stay 0.
    static OrbelMidiEvent fromBytes(int32_t sampleOffset, const uint8_t* bytes, size_t count);

    // [any thread]  Fills channel, type, note, controller and amounts in from the raw bytes. The type of a
    // message of another kind stays what an adapter has set.
    void completeFromBytes();

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
