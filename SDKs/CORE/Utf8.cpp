// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/Utf8.h"

#include <algorithm>

namespace Core::Utf8
{
namespace
{
constexpr std::size_t mostContinuations = 3;
constexpr unsigned bitsOfContinuation = 6;

unsigned valueOf(char byte)
{
    return static_cast<unsigned char>(byte);
}

// Above ASCII, by the form of the first byte alone.
std::size_t announcedLength(unsigned first)
{
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

std::size_t encodedLength(char32_t codePoint)
{
    return codePoint < 0x80 ? 1 : codePoint < 0x800 ? 2 : codePoint < 0x10000 ? 3 : 4;
}

// Whether a byte can be the second one of a valid sequence. The first byte begins one of at least two.
bool canFollow(unsigned first, unsigned second)
{
    const unsigned lowest = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    return second >= lowest && second <= highest;
}

// The bytes at the start of text that begin a valid sequence, or are one; at least 1.
std::size_t lengthOfBeginning(std::string_view text)
{
    const std::size_t length = std::min(sequenceLength(text[0]), text.size());
    if (length < 2 || !canFollow(valueOf(text[0]), valueOf(text[1])))
        return 1;
    std::size_t valid = 2;
    while (valid < length && isContinuation(text[valid]))
        ++valid;
    return valid;
}
}

std::size_t sequenceLength(char first)
{
    const unsigned byte = valueOf(first);
    if (byte < 0x80)
        return 1;
    return byte < 0xC2 || byte > 0xF4 ? 0 : announcedLength(byte);
}

CodePoint decode(std::string_view text)
{
    const unsigned first = valueOf(text[0]);
    if (first < 0x80)
        return {first, 1, Form::valid};
    const std::size_t length = announcedLength(first);
    if (isContinuation(text[0]) || text.size() < length ||
        !std::all_of(text.begin() + 1, text.begin() + long(length), isContinuation))
        return {first, 1, Form::broken};

    char32_t value = first & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i)
        value = value << bitsOfContinuation | (valueOf(text[i]) & 0x3Fu);
    const bool isValid =
        encodedLength(value) == length && !isSurrogate(value) && value <= highestCodePoint && first < 0xF8;
    return {value, length, isValid ? Form::valid : Form::irregular};
}

std::string encode(char32_t codePoint)
{
    if (isSurrogate(codePoint) || codePoint > highestCodePoint)
        return {};
    if (codePoint < 0x80)
        return {char(codePoint)};
    const std::size_t length = encodedLength(codePoint);
    std::string bytes(length, '\0');
    for (std::size_t i = length; i-- > 1; codePoint >>= bitsOfContinuation)
        bytes[i] = char(0x80 | (codePoint & 0x3F));
    bytes[0] = char((0xF00 >> length & 0xFF) | codePoint); // as many leading ones as there are bytes
    return bytes;
}

std::size_t align(std::string_view text, std::size_t position)
{
    if (position >= text.size())
        return text.size();
    while (position > 0 && isContinuation(text[position]))
        --position;
    return position;
}

std::size_t stepBack(std::string_view text, std::size_t position)
{
    return position > 0 ? align(text, position - 1) : 0;
}

std::size_t advance(std::string_view text, std::size_t position)
{
    if (position < text.size())
        ++position;
    while (position < text.size() && isContinuation(text[position]))
        ++position;
    return position;
}

std::string_view cut(std::string_view text, std::size_t bytes)
{
    if (text.size() <= bytes)
        return text;
    for (std::size_t i = 0; i < mostContinuations && bytes > 0 && isContinuation(text[bytes]); ++i)
        --bytes;
    return text.substr(0, bytes);
}

std::string_view withoutHalfCharacter(std::string_view text)
{
    for (std::size_t start = 0, at = 0; start < text.size(); start = at)
    {
        const std::size_t end = start + sequenceLength(text[start]);
        for (at = start + 1; at < text.size() && at < end && isContinuation(text[at]);)
            ++at;
        if (at == text.size() && at < end)
            return text.substr(0, start);
        if (at != end)
            return text;
    }
    return text;
}

std::string removeInvalid(std::string_view text)
{
    std::string result;
    while (!text.empty())
    {
        const CodePoint next = decode(text);
        const std::size_t length = next.form == Form::valid ? next.length : 1;
        if (next.form == Form::valid)
            result += text.substr(0, length);
        text.remove_prefix(length);
    }
    return result;
}

std::string replaceInvalid(std::string_view text)
{
    std::string result;
    while (!text.empty())
    {
        const std::size_t length = lengthOfBeginning(text);
        if (length == sequenceLength(text[0]))
            result += text.substr(0, length);
        else
            result += encode(replacementCharacter);
        text.remove_prefix(length);
    }
    return result;
}
}
