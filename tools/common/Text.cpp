// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/common/Text.h"

#include "CORE/Utf8.h"
#include "tools/common/ToolError.h"

#include <charconv>
#include <cmath>

namespace lodex
{
static constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text)
{
    const size_t first = text.find_first_not_of(blanks);
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view takeWord(std::string_view& text)
{
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    text = trimmed(text.substr(word.size()));
    return word;
}

template <typename Number>
static std::optional<Number> parseWhole(std::string_view text)
{
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1); // which from_chars does not take
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

std::optional<double> parseNumber(std::string_view text)
{
    const auto number = parseWhole<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<int64_t> parseWholeNumber(std::string_view text)
{
    return parseWhole<int64_t>(text);
}

template <typename Number>
static Number inRange(std::optional<Number> number, std::string_view what, std::string_view text,
                      std::string_view kind, Number lowest, Number highest)
{
    if (!number || *number < lowest || *number > highest)
        throw ToolError(printable(what) + " takes a " + std::string(kind) + " from " +
                        formatNumber(double(lowest)) + " to " + formatNumber(double(highest)) + ", not " +
                        inQuotes(text));
    return *number;
}

double numberInRange(std::string_view what, std::string_view text, double lowest, double highest)
{
    return inRange(parseNumber(text), what, text, "number", lowest, highest);
}

int64_t wholeNumberInRange(std::string_view what, std::string_view text, int64_t lowest, int64_t highest)
{
    return inRange(parseWholeNumber(text), what, text, "whole number", lowest, highest);
}

template <typename Number>
static std::string shortest(Number value)
{
    char buffer[64];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

std::string formatNumber(double value)
{
    return shortest(value);
}

std::string formatNumber(float value)
{
    return shortest(value);
}

std::string printable(std::string_view text)
{
    const std::string valid = Core::Utf8::replaceInvalid(text);
    std::string result;
    for (std::string_view rest = valid; !rest.empty();)
    {
        const Core::Utf8::CodePoint next = Core::Utf8::decode(rest);
        result += Core::Utf8::isControl(next.value) ? "?" : rest.substr(0, next.length);
        rest.remove_prefix(next.length);
    }
    return result;
}

std::string inQuotes(std::string_view text)
{
    return '"' + printable(text) + '"';
}
}
