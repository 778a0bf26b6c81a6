// SPDX-License-Identifier: GPL-3.0-or-later
// The text of the framework: a std::string that can be built from a printf format.
//
// A text alone is never a format: it is taken as it stands, per cent signs and all. A format is what comes
// with at least one argument, and the compiler checks the one against the other.
#pragma once

#include <cstdarg>
#include <string>
#include <utility>
#include <vector>

namespace Sonvex
{
// [any thread but audio]
class String : public std::string
{
public:
    static constexpr size_t kLongestFormatted = 32223; // characters; what a format prints is cut there

    String() = default;
    String(const std::string& text) : std::string(text) {}
    String(std::string&& text) noexcept : std::string(std::move(text)) {}
    // The text as it stands; null counts as empty.
    String(const char* text) : std::string(text ? text : "") {}
    // What the format prints in the "C" locale. (A template only so that the one above is the better match
    // for a lone text; the same goes for append_formated.)
    template <int = 0>
    [[gnu::format(printf, 2, 3)]] String(const char* format, ...);

    // Equal to the last character; null counts as empty.
    bool operator==(const char* text) const { return compare(text ? text : "") == 0; }

    void append_formated(const char* text);
    template <int = 0>
    [[gnu::format(printf, 2, 3)]] void append_formated(const char* format, ...);

    // The 26 letters of either case; all other bytes, including those of UTF-8, stay.
    void toUpper();
    void toLower();
    // False for an empty text.
    bool endsWidth(char last) const { return !empty() && back() == last; }
    void removeChars(char unwanted);

private:
    void appendFormat(const char* format, va_list arguments);
};

using StringList = std::vector<String>;

// Erases blanks, the letters a e i o u and the Latin-1 characters 0xE4 0xF6 0xFC, from the start on, until
// the text has no more than length characters. A text without enough of them stays longer.
void shortenString(String& text, int length);

// Replaces every occurrence of from, left to right, and does not look into what it has put in. Does nothing
// if from is empty, either is null, or both are equal.
void replaceString(String& text, const char* from, const char* to);

template <int>
String::String(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    appendFormat(format, arguments);
    va_end(arguments);
}

template <int>
void String::append_formated(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    appendFormat(format, arguments);
    va_end(arguments);
}
}
