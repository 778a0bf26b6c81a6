// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/String.h"

#include "CORE/Format.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace Sonvex
{
void String::appendFormat(const char* format, va_list arguments)
{
    append(Core::formatBounded(kLongestFormatted, format, arguments));
}

void String::append_formated(const char* text)
{
    append(text ? text : "");
}

void String::toUpper()
{
    for (char& c : *this)
        if (c >= 'a' && c <= 'z')
            c = char(c - 'a' + 'A');
}

void String::toLower()
{
    for (char& c : *this)
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
}

void String::removeChars(char unwanted)
{
    std::erase(*this, unwanted);
}

void shortenString(String& text, int length)
{
    constexpr std::string_view expendable = " aeiou\xE4\xFC\xF6";
    const size_t wanted = size_t(std::max(length, 0));
    size_t surplus = text.size() > wanted ? text.size() - wanted : 0;
    std::erase_if(text,
                  [&](char c)
                  {
                      if (surplus == 0 || expendable.find(c) == expendable.npos)
                          return false;
                      --surplus;
                      return true;
                  });
}

void replaceString(String& text, const char* from, const char* to)
{
    if (!from || !*from || !to || std::strcmp(from, to) == 0)
        return;
    const size_t fromLength = std::strlen(from);
    const size_t toLength = std::strlen(to);
    for (size_t at = text.find(from); at != text.npos; at = text.find(from, at + toLength))
        text.replace(at, fromLength, to);
}
}
