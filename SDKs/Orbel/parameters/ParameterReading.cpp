// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/ParameterReading.h"

#include "Orbel/parameters/ParameterText.h"
#include "Orbel/parameters/TypedText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace Orbel
{
namespace
{
using Number = std::optional<double>;
using Unit = ParameterUnitType;

struct UnitWord
{
    Unit unit;
    std::string_view word;
    double factor;
};
// A word that begins with another one of its unit stands before it.
constexpr UnitWord unitWords[] = {
    {Unit::Milliseconds, "msec", 1.0},
    {Unit::Milliseconds, "ms", 1.0},
    {Unit::Milliseconds, "seconds", 1000.0},
    {Unit::Milliseconds, "sec", 1000.0},
    {Unit::Milliseconds, "s", 1000.0},
    {Unit::SignedPercent, "%", 1.0},
    {Unit::SignedPercent, "percent", 1.0},
    {Unit::PlainPercent, "%", 1.0},
    {Unit::PlainPercent, "percent", 1.0},
    {Unit::BipolarPercent, "%", 1.0},
    {Unit::BipolarPercent, "percent", 1.0},
    {Unit::GainInDecibels, "db", 1.0},
    {Unit::PlainDecibels, "db", 1.0},
    {Unit::Hertz, "hz", 1.0},
    {Unit::Hertz, "khz", 1000.0},
    {Unit::Hertz, "k", 1000.0},
};

// A number, bare or with one of the unit's words, and nothing after it.
Number numberInUnit(TypedText text, Unit unit)
{
    const Number number = text.takeNumber();
    if (!number || text.isAtEnd())
        return number;
    for (const UnitWord& each : unitWords)
        if (each.unit == unit && text.takeWord(each.word))
            return text.isAtEnd() ? Number(*number * each.factor) : Number();
    return {};
}

bool takeInfinity(TypedText& text)
{
    return text.takeAnyOf({"infinity", "inf", "oo"});
}

Number gain(TypedText text)
{
    TypedText silence = text;
    if (silence.takeWord("-") && takeInfinity(silence) && (silence.takeWord("db"), silence.isAtEnd()))
        return 0.0;
    const Number decibels = numberInUnit(text, Unit::GainInDecibels);
    return decibels ? std::pow(10.0, *decibels * 0.05) : Number();
}

// Each side is measured by its own end of the range, if there is one below 0.
Number shareOfItsSide(Number percent, const ParameterProperty& property)
{
    if (!percent)
        return {};
    const bool isBelow = *percent < 0.0 && property.getMin() < 0.0f;
    return *percent / 100.0 * (isBelow ? -property.getMin() : property.getMax());
}

Number switchState(TypedText text)
{
    if (const Number number = numberInUnit(text, Unit::Switch))
        return *number >= 0.0 && *number <= 1.0 ? Number(*number < 0.5 ? 0.0 : 1.0) : Number();
    const bool isOff = text.takeAnyOf({"off", "no", "false"});
    if (!isOff && !text.takeAnyOf({"on", "yes", "true"}))
        return {};
    return text.isAtEnd() ? Number(isOff ? 0.0 : 1.0) : Number();
}

// -1, 0 or 1 for left, none and right.
int takeSide(TypedText& text)
{
    if (text.takeAnyOf({"left", "l"}))
        return -1;
    return text.takeAnyOf({"right", "r"}) ? 1 : 0;
}

Number panPosition(TypedText text, float maximum)
{
    if (text.takeAnyOf({"center", "centre", "c"}))
        return text.isAtEnd() ? Number(0.0) : Number();
    int side = takeSide(text);
    const bool isSigned = text.hasSign();
    const Number number = text.takeNumber();
    text.takeWord("%");
    if (side == 0)
        side = takeSide(text);
    if (!number || !text.isAtEnd() || (side != 0 && isSigned))
        return {};
    return *number / 100.0 * maximum * (side < 0 ? -1.0 : 1.0);
}

// The guard of 0.02 keeps a note from showing as the one below.
Number note(TypedText text)
{
    constexpr double guard = 0.02;
    constexpr int semitonesFromA[] = {9, 11, 0, 2, 4, 5, 7};
    const char name = text.next();
    if (name < 'a' || name > 'g')
    {
        const Number number = numberInUnit(text, Unit::Note);
        return number && *number == std::floor(*number) ? Number(*number + guard) : number;
    }
    text.skip();
    const int sharp = text.takeWord("#") ? 1 : text.takeWord("b") ? -1 : 0;
    const Number octave = numberInUnit(text, Unit::Note);
    if (!octave || *octave != std::floor(*octave))
        return {};
    return (*octave + 2.0) * 12.0 + semitonesFromA[name - 'a'] + sharp + guard;
}

Number ratio(TypedText text, const ParameterProperty& property)
{
    TypedText whole = text;
    if (whole.takeWord("1") && whole.takeWord(":"))
        text = whole;
    TypedText infinite = text;
    if (takeInfinity(infinite) && infinite.isAtEnd())
        return std::max(property.getMin(), property.getMax());
    return numberInUnit(text, Unit::Ratio);
}

// "+2 +50 cent": cents without a sign of their own lie on the side of the semitones.
Number semitones(TypedText text)
{
    const bool isBelow = text.next() == '-';
    const Number first = text.takeNumber();
    const bool isSigned = text.hasSign();
    const Number second = text.takeNumber();
    const bool inCents = text.takeAnyOf({"cents", "cent", "ct"});
    if (!inCents)
        text.takeAnyOf({"semitones", "semitone", "st"});
    if (!first || !text.isAtEnd() || (second && !inCents))
        return {};
    if (!second)
        return inCents ? *first / 100.0 : *first;
    return *first + *second / 100.0 * (isBelow && !isSigned ? -1.0 : 1.0);
}

Number readByUnit(const ParameterProperty& property, TypedText text)
{
    const Unit unit = property.getUnitType();
    switch (unit)
    {
    case Unit::SignedPercent:
    case Unit::BipolarPercent:
        return shareOfItsSide(numberInUnit(text, unit), property);
    case Unit::GainInDecibels:
        return gain(text);
    case Unit::SemitonesAndCents:
        return semitones(text);
    case Unit::Switch:
        return switchState(text);
    case Unit::Pan:
        return panPosition(text, property.getMax());
    case Unit::Text:
        return {};
    case Unit::Note:
        return note(text);
    case Unit::Integer:
    {
        const Number number = numberInUnit(text, unit);
        return number ? std::round(*number) : number;
    }
    case Unit::Ratio:
        return ratio(text, property);
    default:
        return numberInUnit(text, unit);
    }
}

// Whether the value is shown as this text, in any of its forms.
bool isShownAs(ParameterProperty& property, float value, std::string_view plain)
{
    char shown[kParameterTextSize] = {};
    for (const long flags : {0L, kRenderWithUnit, kRenderShort, kRenderShort | kRenderWithUnit})
    {
        property.getStringFromValue(value, shown, flags);
        if (plainText(shown) == plain)
            return true;
    }
    return false;
}

// What has few values may show any text for each of them.
Number readAsStep(ParameterProperty& property, std::string_view plain)
{
    constexpr float most = 1000.0f;
    const Unit unit = property.getUnitType();
    const float low = std::min(property.getMin(), property.getMax());
    const float high = std::max(property.getMin(), property.getMax());
    if ((unit != Unit::Integer && unit != Unit::Switch) || !property.showsAnyValue() || !(high - low <= most))
        return {};
    for (int i = 0; float(i) <= high - low; ++i)
        if (isShownAs(property, low + float(i), plain))
            return low + float(i);
    return {};
}

// Rounding may have led to a neighbour of a value that shows this text.
float settled(ParameterProperty& property, float value, std::string_view plain)
{
    constexpr float end = std::numeric_limits<float>::infinity();
    if (value == 0.0f || !property.showsAnyValue())
        return value;
    const float above = std::nextafter(value, end), below = std::nextafter(value, -end);
    for (const float near : {value, above, below, std::nextafter(above, end), std::nextafter(below, -end)})
        if (isShownAs(property, near, plain))
            return near;
    return value;
}

// The text without the name and the colon before it.
std::string_view withoutName(std::string_view plain, const char* name)
{
    const std::string start = plainText(name) + ":";
    if (start.size() == 1 || !plain.starts_with(start))
        return plain;
    plain.remove_prefix(start.size());
    plain.remove_prefix(std::min(plain.find_first_not_of(' '), plain.size()));
    return plain;
}

Number readText(ParameterProperty& property, std::string_view plain)
{
    if (const Number step = readAsStep(property, plain))
        return step;
    if (const ParameterTextReader reader = property.getTextReader())
        return reader(property, plain, property.getDataPointer());
    return readByUnit(property, TypedText(plain));
}

std::optional<float> readOne(ParameterProperty& property, std::string_view plain)
{
    plain = withoutName(withoutName(plain, property.getParamLongName()), property.getParamShortName());
    if (plain.empty())
        return {};
    const Number number = readText(property, plain);
    if (!number || !(std::fabs(*number) <= std::numeric_limits<float>::max()))
        return {};
    return settled(property, float(*number) + 0.0f, plain); // no negative zero
}

// Of several values the first that fits; each has to name its unit, so that "1/4" is none.
std::optional<float> readOneOfSeveral(ParameterProperty& property, std::string_view plain)
{
    std::optional<float> found;
    for (bool isLast = false; !isLast;)
    {
        const std::size_t slash = plain.find('/');
        isLast = slash == std::string_view::npos;
        const std::string part = plainText(plain.substr(0, slash));
        if (part.empty() || (part.back() >= '0' && part.back() <= '9') || part.back() == '.')
            return {};
        if (!found)
            found = readOne(property, part);
        plain.remove_prefix(isLast ? plain.size() : slash + 1);
    }
    return found;
}
}

std::optional<float> readPropertyText(ParameterProperty& property, std::string_view typed)
{
    if (typed.size() >= kParameterTextSize)
        return {};
    const std::string plain = plainText(typed);
    const auto whole = readOne(property, plain);
    return whole || plain.find('/') == std::string::npos ? whole : readOneOfSeveral(property, plain);
}

std::optional<float> readBPMRelativeTime(const ParameterProperty&, std::string_view plain, const void* data)
{
    const auto* const context = static_cast<const BPMTimeContext*>(data);
    const Number shown = numberInUnit(TypedText(plain), Unit::Milliseconds);
    if (!shown)
        return {};
    const double stored = context != nullptr ? *shown / context->shownScale() : *shown;
    return std::fabs(stored) <= std::numeric_limits<float>::max() ? std::optional(float(stored))
                                                                  : std::nullopt;
}
}
