// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterReading.h"
#include "Orbel/parameters/ParameterText.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

using Orbel::ParameterProperty;
using Orbel::readPropertyText;
using Unit = Orbel::ParameterUnitType;

namespace
{
void configure(ParameterProperty& p, Unit unit, float minimum, float maximum)
{
    p.setUnitType(unit);
    p.setMin(minimum);
    p.setMax(maximum);
    p.setParamLongName("Level: A");
}

// 60.5 is the value of nothing in the tables.
float read(ParameterProperty& p, const std::string& typed)
{
    return readPropertyText(p, typed).value_or(60.5f);
}
}

TEST(ParameterReading, WhatIsShownReadsBackToTheSameText)
{
    struct Range
    {
        Unit unit;
        float minimum, maximum;
    };
    const Range ranges[] = {
        {Unit::Milliseconds, 0, 300},
        {Unit::Milliseconds, 10, 0},
        {Unit::SignedPercent, -2, 1},
        {Unit::SignedPercent, 0, 2},
        {Unit::PlainPercent, 0, 100},
        {Unit::GainInDecibels, 0, 2},
        {Unit::PlainDecibels, -60, 12},
        {Unit::Hertz, 20, 22050},
        {Unit::BipolarPercent, -8, 4},
        {Unit::BipolarPercent, 0, 8},
        {Unit::SemitonesAndCents, -24, 24},
        {Unit::Switch, 0, 1},
        {Unit::Pan, -1, 1},
        {Unit::PlainNumber, -3, 3},
        {Unit::Note, 0, 127},
        {Unit::Integer, -4, 60},
        {Unit::Ratio, 1, 20},
    };
    for (const Range& range : ranges)
    {
        ParameterProperty p;
        configure(p, range.unit, range.minimum, range.maximum);
        for (int i = 0; i <= 700; ++i)
            for (const long flags : {0L, 1L, 2L, 3L, 4L, 5L})
            {
                char shown[Orbel::kParameterTextSize], again[Orbel::kParameterTextSize];
                p.setValue(range.minimum + (range.maximum - range.minimum) * float(i) / 700.0f);
                p.getStringFromValue(p.getCurrentValue(), shown, flags);
                const auto value = readPropertyText(p, shown);
                ASSERT_TRUE(value) << "unit " << int(range.unit) << ", " << shown;
                p.setValue(*value);
                p.getStringFromValue(p.getCurrentValue(), again, flags);
                if (*value == 0.0f && (range.unit == Unit::Pan || std::strpbrk(shown, "+-") != nullptr))
                    continue; // "-0", "+ 0" and "Left  0" are 0
                EXPECT_STREQ(shown, again) << "unit " << int(range.unit);
            }
    }
}

TEST(ParameterReading, EveryUnitTakesWhatAMusicianTypes)
{
    constexpr float nothing = 60.5f;
    struct Case
    {
        Unit unit;
        float minimum, maximum;
        const char* typed;
        float value;
    };
    const Case cases[] = {
        {Unit::Milliseconds, 0, 300, " 12,5 MS ", 12.5f},
        {Unit::Milliseconds, 0, 300, "1.2 s", 1200.0f},
        {Unit::Milliseconds, 0, 300, "120.00\xC2\xA0ms / 50.00%", 120.0f},
        {Unit::Milliseconds, 0, 300, "Curve: 50.00% / Level: A: 120 ms", 120.0f},
        {Unit::Milliseconds, 0, 300, "level: a: .5e1", 5.0f},
        {Unit::Milliseconds, 0, 300, "\xE2\x88\x92 7", -7.0f}, // the range is the property's
        {Unit::Milliseconds, 0, 300, "6 dB", nothing},
        {Unit::Milliseconds, 0, 300, "1/4", nothing},
        {Unit::Milliseconds, 0, 300, "1/4 s", nothing},
        {Unit::Milliseconds, 0, 300, "1 2 ms", nothing},
        {Unit::Milliseconds, 0, 300, "1,234.5", nothing},
        {Unit::Milliseconds, 0, 300, "0x10", nothing},
        {Unit::Hertz, 20, 20000, "1,2kHz", 1200.0f},
        {Unit::Hertz, 20, 20000, "440hz", 440.0f},
        {Unit::SignedPercent, 0, 2, "50 %", 1.0f}, // of the range, as it is shown
        {Unit::SignedPercent, 0, 2, "50", 1.0f},
        {Unit::SignedPercent, -2, 1, "-25 percent", -0.5f},
        {Unit::SignedPercent, 0, 1, "5 %%", nothing},
        {Unit::BipolarPercent, -8, 4, "-50", -4.0f},
        {Unit::BipolarPercent, -8, 4, "10.00 ms / +50.00%", 2.0f},
        {Unit::GainInDecibels, 0, 2, "-6 dB", 0.50118723f},
        {Unit::GainInDecibels, 0, 2, "-INF dB", 0.0f},
        {Unit::GainInDecibels, 0, 2, "-oo", 0.0f},
        {Unit::GainInDecibels, 0, 2, "- \xE2\x88\x9E", 0.0f},
        {Unit::GainInDecibels, 0, 2, "inf", nothing},
        {Unit::PlainDecibels, -60, 0, "-inf", nothing},
        {Unit::Switch, 0, 1, " oN ", 1.0f},
        {Unit::Switch, 0, 1, "yes", 1.0f},
        {Unit::Switch, 0, 1, "False", 0.0f},
        {Unit::Switch, 0, 1, "1", 1.0f},
        {Unit::Switch, 0, 1, "0", 0.0f},
        {Unit::Switch, 0, 1, "2", nothing},
        {Unit::Switch, 0, 1, "onset", nothing},
        {Unit::Pan, -1, 1, "L50", -0.5f},
        {Unit::Pan, -1, 1, "25% r", 0.25f},
        {Unit::Pan, -1, 1, "-100", -1.0f},
        {Unit::Pan, -1, 1, "Centre", 0.0f},
        {Unit::Pan, -1, 1, "left -5", nothing},
        {Unit::Note, 0, 127, "c#3", 61.02f},
        {Unit::Note, 0, 127, "Db 3", 61.02f},
        {Unit::Note, 0, 127, "b-2", 11.02f},
        {Unit::Note, 0, 127, "60", 60.02f},
        {Unit::Note, 0, 127, "H3", nothing},
        {Unit::Note, 0, 127, "C", nothing},
        {Unit::Integer, 0, 10, "2.99", 3.0f},
        {Unit::Ratio, 1, 10, "1:4,5", 4.5f},
        {Unit::Ratio, 1, 10, "4", 4.0f},
        {Unit::Ratio, 1, 20, "1 : Inf", 20.0f},
        {Unit::SemitonesAndCents, -12, 12, "2.5 st", 2.5f},
        {Unit::SemitonesAndCents, -12, 12, "-2 50 cents", -2.5f},
        {Unit::SemitonesAndCents, -12, 12, "50 cent", 0.5f},
        {Unit::SemitonesAndCents, -12, 12, "2 50", nothing},
    };
    for (const Case& c : cases)
    {
        SCOPED_TRACE(testing::Message() << "unit " << int(c.unit) << ", \"" << c.typed << "\"");
        ParameterProperty p;
        configure(p, c.unit, c.minimum, c.maximum);
        EXPECT_FLOAT_EQ(read(p, c.typed), c.value);
    }
}

// No text may change a value unless all of it can be read.
TEST(ParameterReading, HostileTextsAreNoValues)
{
    const std::string texts[] = {"",
                                 " ",
                                 "abc",
                                 "%n",
                                 "%s%s%n",
                                 "1e999",
                                 "-1e999",
                                 "nan",
                                 "-nan",
                                 "+inf",
                                 "1e99",
                                 "--5",
                                 "+",
                                 ".",
                                 "/",
                                 "1//2",
                                 ":",
                                 "/ / ",
                                 "5\n6",
                                 {"5\0006", 3},
                                 "\xC2",
                                 "\xFF",
                                 "5\xE2\x88",
                                 std::string(4000, '9'),
                                 std::string(4000, '/'),
                                 "0." + std::string(300, '0')};
    for (int unit = 0; unit <= 15; ++unit)
        for (const std::string& text : texts)
        {
            ParameterProperty p;
            configure(p, Unit(unit), -20, 20);
            EXPECT_EQ(readPropertyText(p, text), std::nullopt)
                << "unit " << unit << ", " << text.substr(0, 20);
        }
}

TEST(ParameterReading, AReplacementHasAReaderOfItsOwnOrTheWordsOfItsSteps)
{
    ParameterProperty mode;
    configure(mode, Unit::Integer, 0, 2);
    mode.setTextRenderer(
        [](float value, char* text, bool) {
            std::strcpy(text, value < 0.5f ? "Low cut" : value < 1.5f ? "1 kHz" : "5");
        });
    for (const auto& [typed, value] : {std::pair{" LOW cut", 0.0f}, {"1 khz", 1}, {"5", 2}, {"1", 1}})
        EXPECT_EQ(read(mode, typed), value) << typed;
    EXPECT_EQ(readPropertyText(mode, "low"), std::nullopt);

    ParameterProperty half;
    configure(half, Unit::Milliseconds, 0, 100);
    float factor = 2.0f;
    half.setContextRenderer(
        [](ParameterProperty*, float value, char* text, bool, void* data)
        { std::strcpy(text, std::to_string(value * *static_cast<float*>(data)).c_str()); },
        &factor);
    half.setTextReader(
        [](const ParameterProperty&, std::string_view plain, const void* data)
        { return std::optional(std::stof(std::string(plain)) / *static_cast<const float*>(data)); });
    EXPECT_EQ(read(half, "7,5"), 3.75f);
}
