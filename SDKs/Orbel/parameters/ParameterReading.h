// SPDX-License-Identifier: GPL-3.0-or-later
// Values as users type them: the reverse of ParameterText. What a window or a command shows for a value, with
// its unit or without, reads back as a value that shows the same text; only the sides that values close to 0
// show ("-0.00", "Left  0") are lost.
//
// A text is read in the unit that is shown: in a box that shows percent, "50" is 50 %. Case and blanks do not
// matter, a decimal comma counts as a point, and the property's name with a colon may stand in front. Of the
// two values of "120.00 ms / 50.00%" the one with the property's unit is taken. Besides:
//
//   times        "1.2 s" in a box of milliseconds
//   frequencies  "1.2 kHz", "1.2k"
//   gains        "-oo", "-inf" and their like are silence, as far as the range lets them
//   switches     "on", "yes", "true", "off", "no", "false", and numbers from 0 to 1
//   pan          "Left 50", "L50", "50 R", "centre"; bare numbers are negative on the left
//   notes        "C#3", "db 3", and bare note numbers
//   ratios       "1 : 4", "4", "1 : inf"
//   semitones    "+2 +50 cent", "2.5 st", "50 cent"
//   steps        whatever text a property of type Integer or Switch shows for one of its values
//
// A property whose text is rendered by a replacement of its own has a reader beside it (setTextReader); one
// without is read by its unit type.
//
// Hosts' own text input is ParameterProperty::setValue(const char*), which reads otherwise. [window thread]
#pragma once

#include "Orbel/parameters/ParameterProperty.h"

#include <optional>
#include <string_view>

namespace Orbel
{
// The value, finite, but not clamped to the range, which ParameterProperty::setValue does. Nothing for a text
// that cannot be read as a whole, or names another unit ("6 dB" in a box of milliseconds), and for properties
// of type Text. Nothing is written. Any bytes of any length may be passed; a text of kParameterTextSize bytes
// or more is none.
std::optional<float> readPropertyText(ParameterProperty& property, std::string_view typed);

// The reader beside renderBPMRelativeTime: shown milliseconds at the tempo and the time base of data, a
// BPMTimeContext or null, as milliseconds at 128 BPM.
std::optional<float> readBPMRelativeTime(const ParameterProperty& property, std::string_view plain,
                                         const void* data);
}
