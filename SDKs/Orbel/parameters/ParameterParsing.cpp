// SPDX-License-Identifier: GPL-3.0-or-later
// Texts as hosts enter them: the part of ParameterProperty that reads a number in the printed unit.
#include "CORE/Numbers.h"
#include "CORE/Truncate.h"
#include "Orbel/parameters/ParameterCurve.h"
#include "Orbel/parameters/ParameterProperty.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <strings.h>

namespace Orbel
{
namespace
{
// The percent is bent by the curve and bent back. The steps between do not cancel to the bit.
float fractionFromPercent(float percent, const ParameterProperty& property)
{
    const float range = property.getMax() - property.getMin();
    const float bent = bendPosition(percent / 100.0f, property.getCurve());
    const float scaled = bent * range / range;
    return bendPosition(scaled, -property.getCurve());
}

int indexOfNote(const std::string& name)
{
    static constexpr std::array names = {"C", "C#", "D", "D#", "E", "F", "F#", "G", "G#", "A", "A#", "B"};
    for (size_t i = 0; i < names.size(); ++i)
        if (strcasecmp(names[i], name.c_str()) == 0)
            return int(i);
    return 0; // an unknown name adds nothing
}

// "c#3" is 61.02: the guard keeps the number from truncating to the note below.
float noteFromText(std::string text)
{
    std::erase(text, ' ');
    const size_t nameLength = text.size() > 1 && text[1] == '#' ? 2 : std::min<size_t>(text.size(), 1);
    const double octave = Core::truncate<int>(double(std::strtol(text.c_str() + nameLength, nullptr, 10)));
    return float((octave + 2.0) * 12.0 + indexOfNote(text.substr(0, nameLength)) + 0.02);
}

// The n of "1 : n", of "1:n" or of a bare "n". Any "inf", also one with a minus, is the maximum.
float ratioFromText(const char* text, const ParameterProperty& property)
{
    if (const char* spaced = std::strstr(text, ": "))
        text = spaced + 2;
    else if (const char* colon = std::strchr(text, ':'))
        text = colon + 1;
    return std::strstr(text, "inf") ? property.getMax() : float(Core::parseDouble(text));
}

void copyText(const char* text, void* buffer)
{
    if (!buffer)
        return;
    const size_t length = strnlen(text, kParameterTextSize - 1);
    char* out = static_cast<char*>(buffer);
    std::memmove(out, text, length); // the text may be the buffer's own
    out[length] = 0;
}
}

void ParameterProperty::setValue(const char* text)
{
    if (!text)
        return;
    const float number = float(Core::parseDouble(text));
    switch (getUnitType())
    {
    case ParameterUnitType::SignedPercent:
        return setValue(fractionFromPercent(number, *this));
    case ParameterUnitType::GainInDecibels:
        return setValue(float(std::pow(10.0, double(number) * 0.05)));
    case ParameterUnitType::Pan:
        return setValue(number / 100.0f);
    case ParameterUnitType::Text:
        copyText(text, getDataPointer());
        return setValue(0.0f);
    case ParameterUnitType::Note:
        return setValue(std::strlen(text) < 2 ? number : noteFromText(text));
    case ParameterUnitType::Ratio:
        return setValue(ratioFromText(text, *this));
    default:
        return setValue(number);
    }
}
}
