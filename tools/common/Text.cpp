#include "tools/common/Text.h"

#include "tools/common/ToolError.h"

#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

namespace lodex
{
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

// Bytes that are no UTF-8 become the replacement character.
static std::string validUtf8(std::string_view text)
{
    using nlohmann::json;
    return json::parse(json(text).dump(-1, ' ', false, json::error_handler_t::replace)).get<std::string>();
}

std::string printable(std::string_view text)
{
    const std::string valid = validUtf8(text);
    const auto byte = [&](size_t at) { return static_cast<unsigned char>(valid[at]); };
    std::string result;
    for (size_t i = 0; i < valid.size(); ++i)
    {
        const bool longControl = byte(i) == 0xC2 && byte(i + 1) < 0xA0; // U+0080 to U+009F
        const bool control = longControl || byte(i) < 32 || byte(i) == 127;
        result += control ? '?' : valid[i];
        i += longControl ? 1 : 0;
    }
    return result;
}

std::string inQuotes(std::string_view text)
{
    return '"' + printable(text) + '"';
}
}
