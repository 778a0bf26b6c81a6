// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterText.h"

#include "CORE/Numbers.h"
#include "CORE/Truncate.h"
#include "Orbel/parameters/WholeNumber.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string>

namespace Orbel
{
namespace
{
void copyOut(const std::string& from, char* text)
{
    text[from.copy(text, kParameterTextSize - 1)] = 0;
}

// "%<width>.<decimals>f", the same in every locale.
std::string fixed(double number, int decimals, size_t width = 0)
{
    const std::string digits = Core::formatFixed(number, decimals);
    return std::string(width - std::min(width, digits.size()), ' ') + digits;
}

std::string signedPercent(float value, float minimum, float maximum, int decimals)
{
    if (value < 0.0f)
        return "-" + fixed(value / minimum * 100.0f, decimals);
    return (minimum < 0.0f ? "+" : "") + fixed(value / maximum * 100.0f, decimals);
}

std::string decibels(float gain, int decimals)
{
    const float level = float(20.0 * std::log10(double(gain)));
    if (level >= 0.0f)
        return "+" + fixed(level, decimals, 2);
    if (level >= -99.0f)
        return fixed(level, decimals, 2);
    return "-oo"; // and so a gain of 0 or below
}

std::string bipolarPercent(float value, float minimum, float maximum, bool longForm)
{
    if (value > 0.0f)
        return "+" + fixed(value / maximum * 100.0f, longForm ? 2 : 0, 2) + "%";
    const float percent = minimum != 0.0f ? value / minimum * -100.0f : 0.0f;
    return (longForm ? fixed(percent, 2, 2) : fixed(percent, 0)) + "%";
}

std::string semitonesAndCents(float value)
{
    const bool up = value > 0.0f;
    const float whole = up ? std::floor(value) : std::ceil(value);
    const int cents = Core::truncate<int>((value - whole) * 100.0f);
    const char* sign = up ? "+" : "";
    return sign + std::to_string(Core::truncate<int>(whole)) + " " + sign + std::to_string(cents) + " cent";
}

// Both sides are measured by the maximum.
std::string pan(float value, float maximum)
{
    if (value > 0.0f)
        return "Right " + fixed(value / maximum * 100.0f, 0, 2);
    if (value == 0.0f)
        return "Center";
    return "Left " + fixed(value / maximum * -100.0f, 0, 2);
}

std::string note(float value)
{
    static constexpr std::array names = {"C ", "C#", "D ", "D#", "E ", "F ",
                                         "F#", "G ", "G#", "A ", "A#", "B "};
    const double octaves = value / 12.0 - 2.0;
    const double octave = std::floor(octaves);
    const int index = std::clamp(Core::truncate<int>((octaves - octave) * 12.0), 0, 11);
    return names[size_t(index)] + std::to_string(Core::truncate<int>(octave));
}

std::string textByUnit(const ParameterProperty& property, float value, bool longForm)
{
    const float minimum = property.getMin(), maximum = property.getMax();
    switch (property.getUnitType())
    {
    case ParameterUnitType::SignedPercent:
        return signedPercent(value, minimum, maximum, longForm ? 2 : 0);
    case ParameterUnitType::GainInDecibels:
        return decibels(value, longForm ? 2 : 0);
    case ParameterUnitType::BipolarPercent:
        return bipolarPercent(value, minimum, maximum, longForm);
    case ParameterUnitType::SemitonesAndCents:
        return semitonesAndCents(value);
    case ParameterUnitType::Switch:
        return value < 0.5f ? "Off" : "On";
    case ParameterUnitType::Pan:
        return pan(value, maximum);
    case ParameterUnitType::Note:
        return note(value);
    case ParameterUnitType::Integer:
        return std::to_string(wholeNumber(value));
    case ParameterUnitType::Ratio:
        return value < 10.0f ? " 1 : " + fixed(value, 2) : " 1 : inf";
    default:
        return fixed(value, longForm ? 1 : 0);
    }
}
}

bool ParameterProperty::renderByReplacement(float realValue, char* text, bool withUnit)
{
    if (textRenderer)
        textRenderer(realValue, text, withUnit);
    else if (contextRenderer)
        contextRenderer(this, realValue, text, withUnit, getDataPointer());
    else if (rendererObject)
        rendererObject->renderText(text, withUnit);
    else
        return false;
    return true;
}

void ParameterProperty::getStringFromValue(float realValue, char* text, long flags)
{
    const bool withUnit = flags & kRenderWithUnit;
    std::string result;
    if (flags & kRenderWithName)
        result = std::string(getParamLongName()) + ": ";
    // A replacement gets a buffer of its own: after a long name there would be too little room left.
    char replaced[kParameterTextSize] = {};
    if (renderByReplacement(realValue, replaced, withUnit))
        result += replaced;
    else
    {
        result += textByUnit(*this, realValue, !(flags & kRenderShort));
        if (withUnit)
            result += getUnitName();
    }
    copyOut(result, text);
}

void ParameterProperty::getStringFromValue(double realValue, Core::IString* text)
{
    char buffer[kParameterTextSize] = {};
    getStringFromValue(float(realValue), buffer, 0);
    text->set(buffer);
}

void renderPropertyTextValue(ParameterProperty* property, float value, char* text, bool valueOnly,
                             bool withUnit, bool longForm)
{
    if (!property)
        return;
    const long flags =
        (valueOnly ? 0 : kRenderWithName) | (withUnit ? kRenderWithUnit : 0) | (longForm ? 0 : kRenderShort);
    property->getStringFromValue(value, text, flags);
}

void renderPropertyText(ParameterProperty* property, char* text, bool valueOnly, bool withUnit, bool longForm)
{
    if (property)
        renderPropertyTextValue(property, property->getCurrentValue(), text, valueOnly, withUnit, longForm);
}

void renderDualPropertyText(ParameterProperty* first, ParameterProperty* second, char* text)
{
    if (!first || !second)
        return renderPropertyText(first ? first : second, text, false, true, true);
    char one[kParameterTextSize], other[kParameterTextSize];
    renderPropertyText(first, one, false, true, true);
    renderPropertyText(second, other, false, true, true);
    copyOut(std::string(one) + " / " + other, text);
}

void Helpers::renderValuesAsString(char* text, float value, ParameterProperty* source)
{
    if (!source)
        return;
    ParameterProperty wider;
    wider.setUnitType(source->getUnitType());
    wider.setMin(source->getMin());
    wider.setMax(source->getMax() * 10.0f);
    wider.setValue(value);
    renderPropertyText(&wider, text, true, true, true);
}

void renderBPMRelativeTime(ParameterProperty*, float value, char* text, bool withUnit, void* data)
{
    const auto* context = static_cast<const BPMTimeContext*>(data);
    if (context && context->bpmScale)
    {
        value = float(value * (128.0 / context->tempo));
        value *= context->timeAdjust;
    }
    copyOut(fixed(value, 2) + (withUnit ? " ms" : ""), text);
}

float getTimeScaledToTempo128(float time, float tempo)
{
    return float(double(time) * tempo * 0.0078125); // tempo / 128
}

const char* removeFirstDigits(const char* name)
{
    if (!name || !name[0] || !name[1] || name[2] != '-')
        return name;
    const char prefix[] = {name[0], name[1], 0};
    return std::atoi(prefix) >= 1 ? name + 3 : name;
}
}
