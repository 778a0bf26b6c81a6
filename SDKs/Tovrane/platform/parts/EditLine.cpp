// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/EditLine.h"

#include "CORE/Utf8.h"

#include <algorithm>

namespace Utf8 = Core::Utf8;

namespace Tovra
{
// Letters and digits of every script; all else of ASCII parts words.
static bool isOfWord(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return value >= 0x80 || (value >= '0' && value <= '9') || (value >= 'A' && value <= 'Z') ||
           (value >= 'a' && value <= 'z') || value == '_';
}

std::string onOneLine(std::string_view text)
{
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == '\0'))
        text.remove_suffix(1);
    std::string result;
    while (!text.empty())
    {
        const Utf8::CodePoint next = Utf8::decode(text);
        const bool isValid = next.form == Utf8::Form::valid;
        const std::string_view character = text.substr(0, isValid ? next.length : 1);
        text.remove_prefix(character.size());
        if (!isValid || (character == "\r" && text.starts_with('\n')))
            continue;
        if (character == "\n" || character == "\r" || character == "\t")
            result += ' ';
        else if (!Utf8::isControl(next.value))
            result += character;
    }
    return result;
}

std::string typedBy(const TovraKeyCode& code)
{
    if (code.virtualKey >= kVirtualKeypad0 && code.virtualKey < kVirtualKeypadMultiply)
        return std::string(1, char('0' + (code.virtualKey - kVirtualKeypad0)));
    if (code.virtualKey == kVirtualSpace)
        return " ";
    const bool isCharacter = code.character > 0 && code.character <= Utf8::highestCodePoint;
    return isCharacter ? Utf8::encode(char32_t(code.character)) : std::string();
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
    caretAt = Utf8::align(line, at);
    if (!extend)
        anchor = caretAt;
}

std::size_t EditLine::target(Step step, bool forward) const
{
    if (step == wholeLine)
        return forward ? line.size() : 0;
    if (step == character)
        return forward ? Utf8::advance(line, caretAt) : Utf8::stepBack(line, caretAt);
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
    const std::string clean = onOneLine(added);
    const std::string_view fitting = Utf8::cut(clean, most - line.size());
    line.insert(caretAt, fitting);
    moveTo(caretAt + fitting.size(), false);
}

bool EditLine::key(const TovraKeyCode& code, std::string_view typed)
{
    const bool isCommand = (code.modifiers & (kKeyControl | kKeyCommand)) != 0;
    const bool selectsAll = (code.modifiers & kKeyCommand) != 0 && (code.character | 0x20) == 'a';
    if (selectsAll)
        selectAll();
    else if (code.virtualKey == kVirtualBackspace || code.virtualKey == kVirtualDelete)
        erase(isCommand ? word : character, code.virtualKey == kVirtualDelete);
    else if (navigate(code))
        return true;
    else if (typed.empty() || isCommand)
        return false;
    else
        insert(typed);
    return true;
}

bool EditLine::navigate(const TovraKeyCode& code)
{
    const bool extend = (code.modifiers & kKeyShift) != 0;
    const Step step = (code.modifiers & kKeyCommand) != 0 ? word : character;
    switch (code.virtualKey)
    {
    case kVirtualLeft:
    case kVirtualRight:
        move(step, code.virtualKey == kVirtualRight, extend);
        return true;
    case kVirtualUp:
    case kVirtualHome:
        move(wholeLine, false, extend);
        return true;
    case kVirtualDown:
    case kVirtualEnd:
        move(wholeLine, true, extend);
        return true;
    default:
        return false;
    }
}
}
