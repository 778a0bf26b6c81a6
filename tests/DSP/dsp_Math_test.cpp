// SPDX-License-Identifier: GPL-3.0-or-later
#include "DSP/dsp_Math.h"

#include <gtest/gtest.h>

using namespace DSP::Math;

TEST(dsp_Math, ANoteHasALengthAndAName)
{
    struct Case
    {
        float bpm;
        int resolution;
        float milliseconds;
        const char* name;
    };
    for (const Case& c : {Case{120, 5, 500, "1/4"}, Case{120, 3, 2000, "1/1"}, Case{60, 1, 16000, "4/1"},
                          Case{125, 8, 60, "1/32"}, Case{120, 11, 7.8125f, "1/256"}, Case{120, 0, 2000, ""},
                          Case{120, 12, 2000, ""}, Case{0, 5, 0, "1/4"}})
    {
        EXPECT_EQ(getBeatTime_ms(c.bpm, c.resolution), c.milliseconds) << c.bpm << " " << c.resolution;
        EXPECT_STREQ(getBeatTimeString(c.resolution), c.name);
    }
}
