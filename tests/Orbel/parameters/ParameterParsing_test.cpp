// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterProperty.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

using Orbel::ParameterProperty;
using Unit = Orbel::ParameterUnitType;

TEST(ParameterParsing, EveryUnitReadsWhatAUserTypes)
{
    struct Case
    {
        Unit unit;
        float minimum, maximum;
        const char* text;
        float value;
    };
    const Case cases[] = {
        {Unit::Milliseconds, 0, 300, " 12.5 ms", 12.5f},
        {Unit::Milliseconds, 0, 300, "1e9", 300},
        {Unit::Milliseconds, 1, 300, "-inf", 1},
        {Unit::Hertz, 0, 1000, "440,5", 440},
        {Unit::SignedPercent, 0, 1, "50%", 0.5f},
        {Unit::SignedPercent, 0, 2, "50", 0.5f}, // a fraction: the range is not applied
        {Unit::GainInDecibels, 0, 20, "-6", 0.50118723f},
        {Unit::GainInDecibels, 0, 20, "-oo", 1},
        {Unit::BipolarPercent, -8, 8, "4", 4},
        {Unit::Pan, -1, 1, "-50", -0.5f},
        {Unit::Note, 0, 200, "c#3", 61.02f},
        {Unit::Note, 0, 200, "H3", 60.02f},
        {Unit::Note, 0, 200, "E#3", 60.02f},
        {Unit::Note, 0, 200, "b-2", 11.02f},
        {Unit::Note, 0, 200, "C", 0},
        {Unit::Note, 0, 200, "7", 7},
        {Unit::Note, 0, 200, "  ", 24.02f},
        {Unit::Note, 0, 200, "C99999999999999999999", 200},
        {Unit::Ratio, 1, 10, "1 : 4.5", 4.5f},
        {Unit::Ratio, 1, 10, "1:3", 3},
        {Unit::Ratio, 1, 10, "1 : inf", 10},
    };
    for (const Case& c : cases)
    {
        SCOPED_TRACE(testing::Message() << "unit " << int(c.unit) << ", \"" << c.text << "\"");
        ParameterProperty p;
        p.setUnitType(c.unit);
        p.setMin(c.minimum);
        p.setMax(c.maximum);
        p.setValue(c.text);
        EXPECT_EQ(p.getCurrentValue(), c.value);
    }
}

TEST(ParameterParsing, APercentIsNotMovedByTheCurve)
{
    ParameterProperty p;
    p.setCurve(0.5f);
    p.setValue("30");
    EXPECT_FLOAT_EQ(p.getCurrentValue(), 0.3f);
}

TEST(ParameterParsing, ATextGoesToItsBufferAndIsCutToIt)
{
    char buffer[Orbel::kParameterTextSize + 1];
    std::memset(buffer, 'x', sizeof buffer);
    ParameterProperty p;
    p.setUnitType(Unit::Text);
    p.setValue("nowhere to go");
    p.setDataPointer(buffer);
    p.setValue(1.0f);
    p.setValue("50 %s");
    EXPECT_STREQ(buffer, "50 %s");
    EXPECT_EQ(p.getCurrentValue(), 0.0f);
    p.setValue(std::string(1000, 'n').c_str());
    EXPECT_EQ(std::string(buffer), std::string(255, 'n'));
    EXPECT_EQ(buffer[Orbel::kParameterTextSize], 'x');
}
