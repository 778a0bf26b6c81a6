// SPDX-License-Identifier: GPL-3.0-or-later
// What keys do to the live text field, and its clipboard.
#include "CORE/Utf8.h"
#include "Tovrane/platform/x11/overlays/X11TextEdit.h"
#include "Tovrane/window/ITextEditCallback.h"

namespace Tovra
{
long X11TextEdit::onKeyDown(TovraKeyCode& code)
{
    std::string typed;
    if (code.virtualKey >= kVirtualKeypad0 && code.virtualKey < kVirtualKeypadMultiply)
        typed = char('0' + (code.virtualKey - kVirtualKeypad0));
    else if (code.virtualKey == kVirtualSpace)
        typed = " ";
    else if (code.character > 0 && code.character <= Core::Utf8::highestCodePoint)
        typed = Core::Utf8::encode(char32_t(code.character));
    return overlayKeyDown(code, typed);
}

long X11TextEdit::overlayKeyDown(const TovraKeyCode& code, const std::string& typed)
{
    if (callback == nullptr)
        return kKeyNotHandled;
    const std::weak_ptr<bool> isThere = life;
    if (callback->textEditOnKeyDown(code) == kKeyConsumed || isThere.expired() || callback == nullptr)
        return kKeyConsumed;
    const bool ends = code.virtualKey == kVirtualReturn || code.virtualKey == kVirtualKeypadEnter ||
                      code.virtualKey == kVirtualEscape;
    if (ends)
    {
        callback->textEditLooseFocus(code.virtualKey != kVirtualEscape); // usually the end of this
        return kKeyConsumed;
    }
    if (!command(code) && !navigate(code) && !edit(code, typed))
        return kKeyNotHandled;
    changed();
    return kKeyConsumed;
}

void X11TextEdit::overlayText(const std::string& text)
{
    line.insert(text);
    changed();
}

// What Control does, and shift with Insert and Delete.
bool X11TextEdit::command(const TovraKeyCode& code)
{
    const bool isControl = (code.modifiers & kKeyCommand) != 0;
    const bool isShift = (code.modifiers & kKeyShift) != 0;
    const auto key = isControl ? (code.character | 0x20) : 0; // lower case
    const bool isInsert = code.virtualKey == kVirtualInsert;
    const bool isCut = key == 'x' || (code.virtualKey == kVirtualDelete && isShift && !isControl);
    if (key == 'a')
    {
        line.selectAll();
        offerSelection();
    }
    else if (key == 'c' || (isInsert && isControl) || isCut)
    {
        copy();
        if (isCut && line.hasSelection())
            line.erase(EditLine::character, true);
    }
    else if (key == 'v' || (isInsert && isShift))
        paste(X11Clipboard::copied);
    else
        return false;
    return true;
}

bool X11TextEdit::navigate(const TovraKeyCode& code)
{
    const bool extend = (code.modifiers & kKeyShift) != 0;
    const auto step = (code.modifiers & kKeyCommand) != 0 ? EditLine::word : EditLine::character;
    switch (code.virtualKey)
    {
    case kVirtualLeft:
    case kVirtualRight:
        line.move(step, code.virtualKey == kVirtualRight, extend);
        break;
    case kVirtualUp:
    case kVirtualHome:
        line.move(EditLine::wholeLine, false, extend);
        break;
    case kVirtualDown:
    case kVirtualEnd:
        line.move(EditLine::wholeLine, true, extend);
        break;
    default:
        return false;
    }
    if (extend)
        offerSelection();
    return true;
}

bool X11TextEdit::edit(const TovraKeyCode& code, const std::string& typed)
{
    const bool isCommand = (code.modifiers & (kKeyControl | kKeyCommand)) != 0;
    if (code.virtualKey == kVirtualBackspace || code.virtualKey == kVirtualDelete)
        line.erase(isCommand ? EditLine::word : EditLine::character, code.virtualKey == kVirtualDelete);
    else if (typed.empty() || isCommand)
        return false;
    else
        line.insert(typed);
    return true;
}

void X11TextEdit::copy()
{
    if (line.hasSelection())
        owner->clipboard().offer(X11Clipboard::copied, line.selected());
}

void X11TextEdit::offerSelection()
{
    if (line.hasSelection())
        owner->clipboard().offer(X11Clipboard::selection, line.selected());
}

void X11TextEdit::paste(X11Clipboard::Which from)
{
    if (pasting == nullptr)
        pasting = std::make_unique<X11Paste>(owner->sharedConnection());
    pasting->ask(from,
                 [this](const std::string& text)
                 {
                     line.insert(text);
                     changed();
                 });
}
}
