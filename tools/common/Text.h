// SPDX-License-Identifier: GPL-3.0-or-later
// Parses the words and numbers of command lines and small files, and formats numbers and untrusted texts for
// people. Independent of the locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lodex
{
// The text without the blanks around it: spaces, tabs, and the CR of a line that ends in CR LF.
std::string_view trimmed(std::string_view text);
// Takes the first word off text, and the blanks after it.
std::string_view takeWord(std::string_view& text);

// The number that the whole text is, with nothing before or after it. NaN and infinities are refused.
std::optional<double> parseNumber(std::string_view text);
std::optional<int64_t> parseWholeNumber(std::string_view text);

// The number, or a ToolError that says what has which range.
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
