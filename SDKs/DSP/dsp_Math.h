// SPDX-License-Identifier: GPL-3.0-or-later
// Lengths of notes, and a crossfade position. [any thread]
#pragma once

namespace DSP
{
namespace Math
{
// The length in milliseconds of a note value at a tempo in beats per minute; 0 for a tempo of 0.
// resolution: 1 is four whole notes, 2 is two, 3 is one ("1/1"), 4 a half note and so on to 11, a 256th; any
// other number counts as a whole note. A beat is a quarter note.
float getBeatTime_ms(float bpm, int resolution);

// The name of such a note value, from "4/1" to "1/256"; an empty text for other numbers.
const char* getBeatTimeString(int resolution);
}

// A crossfade position and a companion value, both 1 at first.
class CCrossFader
{
public:
    void setCrossFade(float newPosition) { position = newPosition; }
    float getCrossFade() const { return position; }
    float getCompanion() const { return companion; }

private:
    float position = 1.0f;
    float companion = 1.0f;
};
}
