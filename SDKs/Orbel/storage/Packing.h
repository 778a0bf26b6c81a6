// SPDX-License-Identifier: GPL-3.0-or-later
// How the framework's binary formats pack bytes: as a zlib stream, folded, scrambled.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Orbel
{
// [any thread but audio]

// The zlib stream of data at the highest level, if it takes no more than room bytes.
std::optional<std::string> pack(std::string_view data, std::uint64_t room);

// What a zlib stream holds, if that is no more than room bytes; what follows the stream is ignored.
// False, with out empty, if it is damaged, too long, or if room is above 64 MiB. No more
// memory is asked for than a stream of its size can fill.
bool unpack(std::string_view stream, std::uint64_t room, std::string& out);

// Reverses the four bytes at offset 0, at 2, at 4 and so on, as long as there are four: the windows overlap,
// so that the order matters. It is not a byte order: it is the same on every machine. unfold undoes it.
void fold(std::span<char> data);
void unfold(std::span<char> data);

// How much may still be unpacked of one file. A small file can unpack to a very large one, and a bank to many
// of them: all that is read of it comes out of one allowance. Apart from it, every reader refuses what
// unpacks to more than 64 MiB at once.
class UnpackingAllowance
{
public:
    // Without a number there is no limit.
    explicit UnpackingAllowance(std::uint64_t bytes = UINT64_MAX) : left(bytes) {}

    // Takes the bytes from the allowance. False, and nothing taken, if it has fewer left.
    bool take(std::uint64_t bytes)
    {
        const bool enough = bytes <= left;
        left -= enough ? bytes : 0;
        refusals += enough ? 0 : 1;
        return enough;
    }
    int getRefusalCount() const { return refusals; }

private:
    std::uint64_t left;
    int refusals = 0;
};

// Exchanges readable bytes for others: XOR with 0xAA at even offsets, with 0x55 at odd ones. It undoes
// itself.
void scramble(std::span<char> data);
}
