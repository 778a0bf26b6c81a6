// SPDX-License-Identifier: GPL-3.0-or-later
// What the number of a parameter means, and with it how it reads as text.
#pragma once

#include <cstdint>

namespace Orbel
{
// The numbers are fixed: parameter tables and hosts' automation curves rest on them.
enum class ParameterUnitType : std::int32_t
{
    Milliseconds = 0,
    SignedPercent = 1,  // a fraction of the maximum (below 0: of the minimum)
    PlainPercent = 2,   // the printed number
    GainInDecibels = 3, // linear gain, printed in decibels
    PlainDecibels = 4,
    Hertz = 5,
    BipolarPercent = 6, // a fraction of the extreme on its side
    SemitonesAndCents = 7,
    Switch = 8, // off below 0.5
    Pan = 9,    // below 0 left, above 0 right
    PlainNumber = 10,
    Text = 11, // no number: the property's data pointer points at the text
    Note = 12, // MIDI note number, 60 is C 3
    Integer = 13,
    Ratio = 14 // the n of "1 : n"
};
}
