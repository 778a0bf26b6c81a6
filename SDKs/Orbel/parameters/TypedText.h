// SPDX-License-Identifier: GPL-3.0-or-later
// A text as a user typed it, and the numbers and words in it: what the readers of parameter texts stand on.
// [any thread]
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace Orbel
{
// The same text in the one form that readers know: lower case, a point for a decimal comma, "-" for the
// minus and dash signs of Unicode, "inf" for its infinity, "#" and "b" for sharp and flat, plain blanks for
// tabs and no-break spaces, none at the ends.
std::string plainText(std::string_view typed);

// Reads a plain text from its start. Each take... leaves the place as it is if what it looks for is not
// there; blanks before it are skipped.
class TypedText
{
public:
    explicit TypedText(std::string_view plain) : rest(plain) {}

    // A finite decimal number, with an exponent or not; blanks may follow its sign ("+ 3"). Neither "inf" nor
    // "nan" is one, nor what a double cannot hold ("1e999").
    std::optional<double> takeNumber();
    bool takeWord(std::string_view word);
    bool takeAnyOf(std::initializer_list<std::string_view> words);
    // Whether a sign comes next.
    bool hasSign();
    // The character that comes next, 0 at the end.
    char next();
    void skip() { rest.remove_prefix(rest.empty() ? 0 : 1); }
    // Whether only blanks are left.
    bool isAtEnd() { return next() == 0 && rest.empty(); }

private:
    std::string_view rest;
};
}
