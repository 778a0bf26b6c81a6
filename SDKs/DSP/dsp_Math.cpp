// SPDX-License-Identifier: GPL-3.0-or-later
#include "DSP/dsp_Math.h"

namespace DSP::Math
{
struct NoteValue
{
    float wholeNotes;
    const char* text;
};

constexpr NoteValue noteValues[] = {
    {4.0f, "4/1"},       {2.0f, "2/1"},         {1.0f, "1/1"},          {0.5f, "1/2"},
    {0.25f, "1/4"},      {0.125f, "1/8"},       {0.0625f, "1/16"},      {0.03125f, "1/32"},
    {0.015625f, "1/64"}, {0.0078125f, "1/128"}, {0.00390625f, "1/256"},
};
constexpr int numNoteValues = sizeof noteValues / sizeof noteValues[0];

static const NoteValue* find(int resolution)
{
    return resolution >= 1 && resolution <= numNoteValues ? &noteValues[resolution - 1] : nullptr;
}

float getBeatTime_ms(float bpm, int resolution)
{
    if (bpm == 0.0f)
        return 0.0f;
    const NoteValue* note = find(resolution);
    return 60.0f / bpm * 4000.0f * (note ? note->wholeNotes : 1.0f);
}

const char* getBeatTimeString(int resolution)
{
    const NoteValue* note = find(resolution);
    return note ? note->text : "";
}
}
