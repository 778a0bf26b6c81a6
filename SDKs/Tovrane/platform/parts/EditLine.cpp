#include "Tovrane/platform/parts/EditLine.h"

#include <algorithm>

namespace Tovra
{
namespace
{
bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

// Letters and digits of every script; all else of ASCII parts words.
bool isOfWord(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return value >= 0x80 || (value >= '0' && value <= '9') || (value >= 'A' && value <= 'Z') ||
           (value >= 'a' && value <= 'z') || value == '_';
}

// The bytes of the character at the start; 0 if it is none. Neither surrogates nor longer forms than needed.
std::size_t lengthOfCharacter(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
    if (lead < 0xc2 || lead > 0xf4 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if (!isContinuation(text[i]))
            return 0;
    const bool isTooLong = (lead == 0xe0 && byte(1) < 0xa0) || (lead == 0xf0 && byte(1) < 0x90);
    const bool isSurrogate = lead == 0xed && byte(1) >= 0xa0;
    const bool isTooHigh = lead == 0xf4 && byte(1) >= 0x90;
    return isTooLong || isSurrogate || isTooHigh ? 0 : length;
}

bool isControl(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character[0]);
    return first < 0x20 || first == 0x7f ||
           (first == 0xc2 && static_cast<unsigned char>(character[1]) < 0xa0);
}
}

std::string onOneLine(std::string_view text)
{
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == '\0'))
        text.remove_suffix(1);
    std::string result;
    while (!text.empty())
    {
        const std::size_t length = lengthOfCharacter(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        text.remove_prefix(character.size());
        if (length == 0 || (character == "\r" && text.starts_with('\n')))
            continue;
        if (character == "\n" || character == "\r" || character == "\t")
            result += ' ';
        else if (!isControl(character))
            result += character;
    }
    return result;
}

std::string validUtf8(std::string_view text)
{
    std::string result;
    while (!text.empty())
    {
        const std::size_t length = lengthOfCharacter(text);
        result += text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

std::string utf8OfCharacter(long long character)
{
    const auto byte = [character](int shift, unsigned head, unsigned mask)
    { return char(head | (unsigned(character >> shift) & mask)); };
    if (character <= 0 || character > 0x10ffff || (character >= 0xd800 && character < 0xe000))
        return {};
    if (character < 0x80)
        return {byte(0, 0, 0x7f)};
    if (character < 0x800)
        return {byte(6, 0xc0, 0x1f), byte(0, 0x80, 0x3f)};
    if (character < 0x10000)
        return {byte(12, 0xe0, 0x0f), byte(6, 0x80, 0x3f), byte(0, 0x80, 0x3f)};
    return {byte(18, 0xf0, 0x07), byte(12, 0x80, 0x3f), byte(6, 0x80, 0x3f), byte(0, 0x80, 0x3f)};
}

std::string EditLine::selected() const
{
    return line.substr(selectionStart(), selectionEnd() - selectionStart());
}

void EditLine::setText(std::string_view text)
{
    selectAll();
    insert(text);
    selectAll();
}

void EditLine::selectAll()
{
    anchor = 0;
    caretAt = line.size();
}

void EditLine::selectWord(std::size_t at)
{
    moveTo(at, false);
    if (line.empty())
        return;
    std::size_t first = std::min(caretAt, line.size() - 1);
    const bool kind = isOfWord(line[first]);
    std::size_t last = first;
    while (first > 0 && isOfWord(line[first - 1]) == kind)
        --first;
    while (last < line.size() && isOfWord(line[last]) == kind)
        ++last;
    anchor = first;
    caretAt = last;
}

void EditLine::moveTo(std::size_t at, bool extend)
{
    at = std::min(at, line.size());
    while (at > 0 && at < line.size() && isContinuation(line[at]))
        --at;
    caretAt = at;
    if (!extend)
        anchor = at;
}

std::size_t EditLine::next(std::size_t at) const
{
    if (at < line.size())
        ++at;
    while (at < line.size() && isContinuation(line[at]))
        ++at;
    return at;
}

std::size_t EditLine::previous(std::size_t at) const
{
    if (at > 0)
        --at;
    while (at > 0 && isContinuation(line[at]))
        --at;
    return at;
}

std::size_t EditLine::target(Step step, bool forward) const
{
    if (step == wholeLine)
        return forward ? line.size() : 0;
    if (step == character)
        return forward ? next(caretAt) : previous(caretAt);
    std::size_t at = caretAt;
    if (forward)
    {
        while (at < line.size() && !isOfWord(line[at]))
            ++at;
        while (at < line.size() && isOfWord(line[at]))
            ++at;
        return at;
    }
    while (at > 0 && !isOfWord(line[at - 1]))
        --at;
    while (at > 0 && isOfWord(line[at - 1]))
        --at;
    return at;
}

void EditLine::move(Step step, bool forward, bool extend)
{
    if (step == character && !extend && hasSelection())
        return moveTo(forward ? selectionEnd() : selectionStart(), false);
    moveTo(target(step, forward), extend);
}

void EditLine::erase(Step step, bool forward)
{
    if (!hasSelection())
        moveTo(target(step, forward), true);
    const std::size_t start = selectionStart();
    line.erase(start, selectionEnd() - start);
    moveTo(start, false);
}

void EditLine::insert(std::string_view added)
{
    if (hasSelection())
        erase(character, true);
    std::string clean = onOneLine(added);
    if (clean.size() > most - line.size())
    {
        std::size_t room = most - line.size();
        while (room > 0 && isContinuation(clean[room]))
            --room;
        clean.resize(room);
    }
    line.insert(caretAt, clean);
    moveTo(caretAt + clean.size(), false);
}
}
