// SPDX-License-Identifier: GPL-3.0-or-later
// Parameters as users read them: in a host's list, in a knob's read-out, in the envelope's two-value
// read-out. All on the window thread; texts are at most 255 characters and their end.
#pragma once

#include "CORE/Relaxed.h"
#include "Orbel/parameters/ParameterProperty.h"

namespace Orbel
{
// The text of a value that the property might have. Without a property the text stays as it is.
void renderPropertyTextValue(ParameterProperty* property, float value, char* text, bool valueOnly,
                             bool withUnit, bool longForm);

// The same for the property's current value.
void renderPropertyText(ParameterProperty* property, char* text, bool valueOnly, bool withUnit,
                        bool longForm);

// Both with name and unit, joined with " / "; either may be null.
void renderDualPropertyText(ParameterProperty* first, ParameterProperty* second, char* text);

namespace Helpers
{
// The text of a value up to ten times beyond the source's maximum, with its unit.
void renderValuesAsString(char* text, float value, ParameterProperty* source);
}

// What times that follow the tempo are printed with; filled by the effect on any thread.
struct BPMTimeContext
{
    Core::Relaxed<float> tempo = 10.0f;     // beats a minute
    Core::Relaxed<bool> bpmScale = true;    // false: times are printed as stored
    Core::Relaxed<float> timeAdjust = 1.0f; // beats from trigger to trigger

    // Printed to stored milliseconds.
    double shownScale() const { return bpmScale ? 128.0 / tempo * timeAdjust : 1.0; }
};

// A context renderer: value is in milliseconds at 128 BPM, data a BPMTimeContext or null. Its reader is
// readBPMRelativeTime.
void renderBPMRelativeTime(ParameterProperty* property, float value, char* text, bool withUnit, void* data);

// The inverse scaling: the milliseconds at 128 BPM of a time at this tempo.
float getTimeScaledToTempo128(float time, float tempo);

// The part of a preset's name after its prefix, two digits (not "00") and a dash; all of a name without one.
const char* removeFirstDigits(const char* name);
}
