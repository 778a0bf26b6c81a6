// SPDX-License-Identifier: GPL-3.0-or-later
// What a reader of a format found: whether it took the bytes, and what is wrong with them at which byte. The
// framework follows the format's own rule for damaged data and ignores the words; a tool prints them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Orbel
{
struct Diagnosis
{
    // False: nothing of it was taken. True with words: what stands ahead of the damage was.
    bool taken = true;
    // The byte at which the fault was noticed: in what was given or, where the words say so, in what was
    // unpacked from it.
    std::uint64_t at = 0;
    // What is wrong, as the rest of a sentence about the data: "it is cut off at byte 100 of 160". Empty if
    // nothing is. What it quotes of the data is in it byte for byte.
    std::string why;

    // No fault at all, not even in a part of it.
    bool isSound() const { return taken && why.empty(); }
};

// [any thread but audio]

inline Diagnosis refused(std::uint64_t at, std::string why)
{
    return {false, at, std::move(why)};
}

inline Diagnosis damaged(std::uint64_t at, std::string why)
{
    return {true, at, std::move(why)};
}

// The words for data of which not all bytes are there.
inline std::string cutOff(std::uint64_t there, std::uint64_t declared)
{
    return "it is cut off at byte " + std::to_string(there) + " of " + std::to_string(declared);
}

// The text between double quotes, cut to what a message can bear.
std::string quoted(std::string_view text);
}
