// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterText.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

using Orbel::ParameterProperty;
using Orbel::ParameterUnitType;
using Unit = Orbel::ParameterUnitType;

namespace
{
// A caller's buffer, with a mark behind it that must stay.
struct Buffer
{
    Buffer() { std::memset(bytes, 'x', sizeof bytes); }
    ~Buffer() { EXPECT_EQ(bytes[Orbel::kParameterTextSize], 'x') << "written beyond the buffer"; }
    operator char*() { return bytes; }
    std::string str() const { return {bytes, strnlen(bytes, sizeof bytes)}; }

    char bytes[Orbel::kParameterTextSize + 1];
};

void configure(ParameterProperty& p, Unit unit, float minimum, float maximum)
{
    p.setUnitType(unit);
    p.setMin(minimum);
    p.setMax(maximum);
}

std::string textOf(ParameterProperty& p, float value, long flags)
{
    Buffer text;
    p.getStringFromValue(value, text, flags);
    return text.str();
}
}

TEST(ParameterText, EveryUnitReadsAsItsFormatSays)
{
    struct Case
    {
        Unit unit;
        float minimum, maximum, value;
        const char *longForm, *shortForm;
    };
    const Case cases[] = {
        {Unit::Milliseconds, 0, 300, 12.375f, "12.4", "12"},
        {Unit::Hertz, 0, 1, 3.4e38f, "339999995214436424907732413799364296704.0",
         "339999995214436424907732413799364296704"},
        {Unit(99), 0, 1, 0.5f, "0.5", "0"},
        {Unit::SignedPercent, -2, 1, -0.5f, "-25.00", "-25"},
        {Unit::SignedPercent, 0, 2, 0.5f, "25.00", "25"},
        {Unit::SignedPercent, -1, 2, 0.5f, "+25.00", "+25"}, // where there is a negative side, too
        {Unit::GainInDecibels, 0, 2, 1, "+0.00", "+ 0"},
        {Unit::GainInDecibels, 0, 2, 0, "-oo", "-oo"},
        {Unit::GainInDecibels, 0, 2, 11.2f, "+20.98", "+21"},
        {Unit::GainInDecibels, 0, 2, 1.0e-5f, "-oo", "-oo"},
        {Unit::BipolarPercent, -8, 8, 4, "+50.00%", "+50%"},
        {Unit::BipolarPercent, -8, 4, 0.125f, "+3.12%", "+ 3%"},
        {Unit::BipolarPercent, 0, 8, 0, "0.00%", "0%"},
        {Unit::SemitonesAndCents, -12, 12, 2.5f, "+2 +50 cent", "+2 +50 cent"},
        {Unit::SemitonesAndCents, -12, 12, -2.5f, "-2 -50 cent", "-2 -50 cent"},
        {Unit::SemitonesAndCents, -12, 12, 1e30f, "+2147483647 +0 cent", "+2147483647 +0 cent"},
        {Unit::Switch, 0, 1, 0.49f, "Off", "Off"},
        {Unit::Switch, 0, 1, 0.5f, "On", "On"},
        {Unit::Pan, -1, 1, 0.05f, "Right  5", "Right  5"},
        {Unit::Pan, -1, 1, 0, "Center", "Center"},
        {Unit::Note, 0, 127, 60, "C 3", "C 3"},
        {Unit::Note, 0, 127, 61.02f, "C#3", "C#3"},
        {Unit::Note, 0, 127, -0.5f, "B -3", "B -3"},
        {Unit::Integer, 0, 10, 2.99f, "3", "3"},
        {Unit::Integer, -10, 10, -2.99f, "-3", "-3"},
        {Unit::Integer, 0, 10, -1e20f, "-2147483648", "-2147483648"},
        {Unit::Ratio, 1, 10, 2.5f, " 1 : 2.50", " 1 : 2.50"},
        {Unit::Ratio, 1, 10, 10, " 1 : inf", " 1 : inf"},
    };
    for (const Case& c : cases)
    {
        SCOPED_TRACE(testing::Message() << "unit " << int(c.unit) << ", value " << c.value);
        ParameterProperty p;
        configure(p, c.unit, c.minimum, c.maximum);
        EXPECT_EQ(textOf(p, c.value, 0), c.longForm);
        EXPECT_EQ(textOf(p, c.value, Orbel::kRenderShort), c.shortForm);
    }
}

TEST(ParameterText, TwoPropertiesAreJoinedAndOneStandsAlone)
{
    ParameterProperty time, curve;
    time.setParamLongName("100%n %s");
    configure(time, Unit::Milliseconds, 0, 300);
    time.setValue(20.0f);
    curve.setParamLongName("Curve");
    configure(curve, Unit::BipolarPercent, -8, 8);
    Buffer text;
    Orbel::renderDualPropertyText(&time, &curve, text);
    EXPECT_EQ(text.str(), "100%n %s: 20.0ms / Curve: 0.00%");
    Orbel::renderDualPropertyText(nullptr, &curve, text);
    EXPECT_EQ(text.str(), "Curve: 0.00%");
    Orbel::renderDualPropertyText(nullptr, nullptr, text);
    Orbel::renderPropertyText(nullptr, text, true, true, true);
    EXPECT_EQ(text.str(), "Curve: 0.00%");

    time.setParamLongName(std::string(500, 'n').c_str());
    Orbel::renderDualPropertyText(&time, &time, text);
    EXPECT_EQ(text.str().size(), 255u);
}

namespace
{
struct WholeBuffer : Orbel::IParameterTextRenderer
{
    void renderText(char* text, bool withUnit) override
    {
        std::memset(text, withUnit ? 'u' : 'o', Orbel::kParameterTextSize - 1);
        text[Orbel::kParameterTextSize - 1] = 0;
    }
};
}

TEST(ParameterText, AReplacementIsFinalAndATextFunctionComesAheadOfAnObject)
{
    WholeBuffer object;
    ParameterProperty p;
    p.setParamLongName("Long");
    p.setRendererObject(&object);
    EXPECT_EQ(textOf(p, 0.5f, Orbel::kRenderWithName | Orbel::kRenderWithUnit),
              "Long: " + std::string(249, 'u'));
    p.setTextRenderer([](float, char* text, bool withUnit)
                      { std::strcpy(text, withUnit ? "with" : "without"); });
    EXPECT_EQ(textOf(p, 0.5f, Orbel::kRenderWithUnit), "with");
}

TEST(ParameterText, ValuesBeyondTheRangeAreMeasuredByTenTimesIt)
{
    ParameterProperty source;
    configure(source, Unit::Milliseconds, 10, 300);
    for (const auto& [value, expected] :
         {std::pair{450.0f, "450.0ms"}, {9000.0f, "3000.0ms"}, {1.0f, "10.0ms"}})
    {
        Buffer text;
        Orbel::Helpers::renderValuesAsString(text, value, &source);
        EXPECT_EQ(text.str(), expected);
    }
}

TEST(ParameterText, OnlyANumberFrom1AndADashAreDroppedFromAName)
{
    for (const auto& [name, rest] : {std::pair{"01-Kick", "Kick"},
                                     {"99-", ""},
                                     {"00-x", "00-x"},
                                     {"-1-x", "-1-x"},
                                     {"", ""},
                                     {"1", "1"}})
        EXPECT_STREQ(Orbel::removeFirstDigits(name), rest);
}
