#include "DSP/dsp_Math.h"

#include <gtest/gtest.h>

TEST(dsp_Math, NoteValuesHaveTheirLengthAndName)
{
    struct Case
    {
        float bpm;
        int resolution;
        float milliseconds;
        const char* text;
    };
    const Case table[] = {
        {120, 5, 500, "1/4"}, {120, 3, 2000, "1/1"}, {60, 1, 16000, "4/1"}, {120, 11, 7.8125f, "1/256"},
        {0, 5, 0, "1/4"},     {120, 0, 2000, ""},    {120, 12, 2000, ""},   {120, -1, 2000, ""},
    };
    for (const Case& each : table)
    {
        SCOPED_TRACE(testing::Message() << each.bpm << " bpm, resolution " << each.resolution);
        EXPECT_EQ(DSP::Math::getBeatTime_ms(each.bpm, each.resolution), each.milliseconds);
        EXPECT_STREQ(DSP::Math::getBeatTimeString(each.resolution), each.text);
    }
}
