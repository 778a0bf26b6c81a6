// SPDX-License-Identifier: GPL-3.0-or-later
// How a drag up and down bends a segment. Shift makes it fine, from the press on or on the way, and the value
// goes on from where it is. [window thread]
#pragma once

#include "Tovrane/views/envelope/CEnvelopePoint.h"

namespace Tovra
{
class KnobDrag
{
public:
    // A unit of length changes the normalised value by so much.
    static constexpr float usual = 0.005f;
    static constexpr float fine = 0.0005f;      // while shift is held
    static constexpr float afterFine = 0.0025f; // after it was let go

    void begin(const CEnvelopePoint& knob, double y, long buttons, float normalized, float direction);
    // The normalised value at this height.
    float valueAt(double y, long buttons);

private:
    DeadZone zone;
    float bend = 0.0f;
    float base = 0.0f;
    float way = 1.0f; // or -1
    float slope = usual;
    double start = 0.0;
    long held = 0;
};
}
