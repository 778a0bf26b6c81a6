// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/TypedText.h"

#include <algorithm>
#include <charconv>

namespace Orbel
{
namespace
{
struct Spelling
{
    std::string_view typed, plain;
};
constexpr Spelling spellings[] = {
    {",", "."},
    {"\t", " "},
    {"\xC2\xA0", " "},       // no-break space
    {"\xE2\x80\x89", " "},   // thin space
    {"\xE2\x80\xAF", " "},   // narrow no-break space
    {"\xE2\x88\x92", "-"},   // minus
    {"\xE2\x80\x93", "-"},   // en dash
    {"\xE2\x88\x9E", "inf"}, // infinity
    {"\xE2\x99\xAF", "#"},   // sharp
    {"\xE2\x99\xAD", "b"},   // flat
};

// The spelling with which the text begins; null for none.
const Spelling* spellingAt(std::string_view text)
{
    for (const Spelling& each : spellings)
        if (text.starts_with(each.typed))
            return &each;
    return nullptr;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
}

std::string plainText(std::string_view typed)
{
    std::string plain;
    while (!typed.empty())
    {
        const Spelling* const known = spellingAt(typed);
        const char c = typed.front();
        plain += known != nullptr ? std::string(known->plain)
                                  : std::string(1, c >= 'A' && c <= 'Z' ? char(c + 32) : c);
        typed.remove_prefix(known != nullptr ? known->typed.size() : 1);
    }
    plain.erase(plain.find_last_not_of(' ') + 1);
    return plain.erase(0, plain.find_first_not_of(' '));
}

char TypedText::next()
{
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    return rest.empty() ? char(0) : rest.front();
}

bool TypedText::hasSign()
{
    return next() == '+' || next() == '-';
}

std::optional<double> TypedText::takeNumber()
{
    const std::string_view before = rest;
    const bool isNegative = next() == '-';
    if (hasSign())
        skip();
    double number = 0.0;
    if (isDigit(next()) || (next() == '.' && rest.size() > 1 && isDigit(rest[1])))
    {
        const auto read = std::from_chars(rest.data(), rest.data() + rest.size(), number);
        if (read.ec == std::errc())
        {
            rest.remove_prefix(std::size_t(read.ptr - rest.data()));
            return isNegative ? -number : number;
        }
    }
    rest = before;
    return {};
}

bool TypedText::takeWord(std::string_view word)
{
    next();
    if (!rest.starts_with(word))
        return false;
    rest.remove_prefix(word.size());
    return true;
}

bool TypedText::takeAnyOf(std::initializer_list<std::string_view> words)
{
    for (const std::string_view word : words)
        if (takeWord(word))
            return true;
    return false;
}
}
