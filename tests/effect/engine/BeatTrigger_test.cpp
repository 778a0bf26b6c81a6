// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/BeatTrigger.h"

#include <cmath>
#include <gtest/gtest.h>

TEST(BeatTrigger, FindsTheNextTriggerInTheSecondHalfOfItsInterval)
{
    struct Case
    {
        float rate, tempo, noteValue;
        long shift;
        double ppq;
        long distance;
    };
    const long none = BeatTrigger::none;
    const Case table[] = {
        {44100, 120, 1, 0, 0.75, 5513}, // position 16537.5: its remainder is cut to 16537
        {44100, 120, 1, 0, 0.25, none}, // the first half of the interval
        {44100, 120, 1, 0, 1, 0},       // on the beat
        {44100, 120, 1, 0, 0, 1},       // the song's beginning, and ahead of it
        {44100, 120, 1, 0, -3.5, 1},
        {44100, 120, 0.25f, 0, 0.9, 2205},       // sixteenths: 4 x 5512.5 - 19845
        {44100, 150, 1.0f / 3.0f, 0, 1.2, 2353}, // a third is a little more in single precision
        {44100, 120, 4, 0, 3.5, 11025},          // bars
        {44100, 120, 1, 5512, 0.75, 1},          // earlier by a quarter of a beat
        {44100, 120, 1, -2205, 0.9, 4410},       // later
        {44100, 120, 1, -5513, 0.25, 0},         // a remainder between -1 and 0 is cut to 0
        {44100, 120, 1, -5514, 0.25, none},      // below that nothing is armed
        {44100, 1e-6f, 1, 0, 0.5, none},         // an interval beyond 32 bits
    };
    for (const Case& each : table)
    {
        const BeatTrigger trigger = {each.rate, each.tempo, each.noteValue, each.shift};
        EXPECT_EQ(trigger.samplesToNext(each.ppq), each.distance)
            << each.tempo << " BPM, base " << each.noteValue << ", shift " << each.shift << ", at "
            << each.ppq;
    }
}

TEST(BeatTrigger, AShiftOfOneIsHalfABeatByBothFormulas)
{
    EXPECT_EQ(shiftSamplesOfParameter(1.0f, 120.0f, 44100.0f), 11025);
    EXPECT_EQ(shiftSamplesOfTempo(-1.0f, 60.0f, 48000.0f), -24000);
    bool differs = false;
    for (float tempo = 60.0f, shift = -1.0f; shift < 1.0f; shift += 1e-5f, tempo += 1e-3f)
    {
        const long first = shiftSamplesOfParameter(shift, tempo, 44100.0f);
        const long second = shiftSamplesOfTempo(shift, tempo, 44100.0f);
        EXPECT_LE(std::labs(first - second), 1);
        differs |= first != second;
    }
    EXPECT_TRUE(differs) << "then one formula would do";
}
