// SPDX-License-Identifier: GPL-3.0-or-later
// What every reader and writer of a binary format needs: 32-bit integers in the byte order of the format,
// on any machine, and the size above which untrusted input is refused.
#pragma once

#include <cstdint>

namespace Core
{
// Bytes. No reader allocates more at once, whatever sizes the data declares.
inline constexpr std::uint64_t kLargestForeignSize = 64u << 20;

// [any thread]  The caller has checked that there are four bytes.
inline std::uint32_t readLittle32(const char* from)
{
    std::uint32_t word = 0;
    for (int i = 3; i >= 0; --i)
        word = word << 8 | static_cast<unsigned char>(from[i]);
    return word;
}

inline std::uint32_t readBig32(const char* from)
{
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i)
        word = word << 8 | static_cast<unsigned char>(from[i]);
    return word;
}

inline void writeLittle32(char* to, std::uint32_t word)
{
    for (int i = 0; i < 4; ++i)
        to[i] = static_cast<char>(word >> 8 * i);
}

inline void writeBig32(char* to, std::uint32_t word)
{
    for (int i = 0; i < 4; ++i)
        to[i] = static_cast<char>(word >> 8 * (3 - i));
}
}
