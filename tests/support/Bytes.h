// SPDX-License-Identifier: GPL-3.0-or-later
// Pieces of binary formats, for tests that put them together field by field.
#pragma once

#include <cstdint>
#include <string>

inline std::string littleWord(std::uint32_t number)
{
    return {char(number), char(number >> 8), char(number >> 16), char(number >> 24)};
}

inline std::string bigWord(std::uint32_t number)
{
    return {char(number >> 24), char(number >> 16), char(number >> 8), char(number)};
}

inline std::string padded(std::string text, size_t size, char with = '\0')
{
    text.resize(size, with);
    return text;
}
