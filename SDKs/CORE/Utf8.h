// SPDX-License-Identifier: GPL-3.0-or-later
// UTF-8: code points out of bytes and back, and where a text may be cut.
//
// Texts may hold any bytes. A valid sequence is what Unicode allows: as short as it can be, no surrogate, at
// most U+10FFFF. What becomes of invalid bytes is the caller's choice, so decode tells two kinds apart.
//
// [any thread]  All of it; only what returns a std::string allocates.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Core::Utf8
{
inline constexpr char32_t highestCodePoint = 0x10FFFF;
inline constexpr char32_t replacementCharacter = 0xFFFD;

// A byte of the form 10xxxxxx, which belongs to the ones before it.
constexpr bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

constexpr bool isSurrogate(char32_t codePoint)
{
    return codePoint >= 0xD800 && codePoint < 0xE000;
}

// U+0000 to U+001F and U+007F to U+009F.
constexpr bool isControl(char32_t codePoint)
{
    return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
}

// The bytes of a sequence by its first one: 1 to 4, or 0 for a byte that begins no valid sequence.
std::size_t sequenceLength(char first);

enum class Form
{
    valid,
    irregular, // complete, but longer than needed, a surrogate, or beyond the highest code point
    broken     // no sequence
};

struct CodePoint
{
    char32_t value;     // of an irregular one what its bits say, of a broken one the byte
    std::size_t length; // bytes; 1 where it is broken
    Form form;
};

// The code point at the start of text, which is not empty.
CodePoint decode(std::string_view text);

// The UTF-8 of a code point; empty for a surrogate and beyond the highest one.
std::string encode(char32_t codePoint);

// Characters start at bytes that are no continuation, and at the very first byte; the last one ends at
// text.size(). align answers the start of the character that position lies in, stepBack the last start before
// position, advance the first one after it.
std::size_t align(std::string_view text, std::size_t position);
std::size_t stepBack(std::string_view text, std::size_t position);
std::size_t advance(std::string_view text, std::size_t position);

// The first bytes of text, at most so many, without the beginning of a character whose rest is cut off. Takes
// off at most the three bytes that this can be, so that a text of invalid bytes does not vanish.
std::string_view cut(std::string_view text, std::size_t bytes);

// The text without a character at its end of which bytes are missing: it stood in a field that was too short.
// Text that is no UTF-8 before that stays as it is, since its end may mean something else.
std::string_view withoutHalfCharacter(std::string_view text);

// The valid sequences of text, without all other bytes.
std::string removeInvalid(std::string_view text);
// Each longest beginning of a valid sequence that does not go on, and each other invalid byte, as a
// replacement character.
std::string replaceInvalid(std::string_view text);
}
