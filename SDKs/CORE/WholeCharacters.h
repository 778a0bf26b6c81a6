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

// The text without a character at its end of which bytes are missing: it stood in a field that was too short.
// Text that is no UTF-8 before that stays as it is, since its end may mean something else.
inline std::string_view withoutHalfCharacter(std::string_view text)
{
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    for (size_t start = 0, at = 0; start < text.size(); start = at)
    {
        const unsigned first = byte(start);
        const size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
        for (at = start + 1; at < text.size() && at < start + length && (byte(at) & 0xC0) == 0x80;)
            ++at;
        if (at == text.size() && at < start + length)
            return text.substr(0, start);
        if (at != start + length)
            return text;
    }
    return text;
}
}
