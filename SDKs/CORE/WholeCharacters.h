// Cutting UTF-8 texts without leaving half a character.
#pragma once

#include <string_view>

namespace Core
{
// [any thread]

// The start of text, of at most `most` bytes. The cut moves back to the start of the character that it would
// have split. Text that is no UTF-8 is cut near the place, or there.
inline std::string_view wholeCharacters(std::string_view text, size_t most)
{
    constexpr int longestTail = 3; // bytes of a character after its first
    const auto isTail = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    if (text.size() <= most)
        return text;
    for (int i = 0; i < longestTail && most > 0 && isTail(text[most]); ++i)
        --most;
    return text.substr(0, most);
}
}
