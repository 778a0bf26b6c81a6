// Words of a command line or an events file as numbers, and numbers and foreign texts as words. The same
// in every country.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lodex
{
// The number that the whole text is, nothing before or behind it. NaN and infinities are no numbers.
std::optional<double> parseNumber(std::string_view text);
std::optional<int64_t> parseWholeNumber(std::string_view text);

// The number that text is, or a ToolError that says what takes which range.
double numberInRange(std::string_view what, std::string_view text, double lowest, double highest);
int64_t wholeNumberInRange(std::string_view what, std::string_view text, int64_t lowest, int64_t highest);

// The shortest text that reads back as value.
std::string formatNumber(double value);
std::string formatNumber(float value);

// text as UTF-8 with every control character as "?", so that a message stays one line.
std::string printable(std::string_view text);
// The same between double quotes.
std::string inQuotes(std::string_view text);
}
