// SPDX-License-Identifier: GPL-3.0-or-later
// What keys do to the live text field, and its clipboard.
#include "Tovrane/platform/x11/overlays/X11TextEdit.h"
#include "Tovrane/window/ITextEditCallback.h"

namespace Tovra
{
long X11TextEdit::onKeyDown(TovraKeyCode& code)
{
    return overlayKeyDown(code, typedBy(code));
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
    if (!command(code))
    {
        if (!line.key(code, typed))
            return kKeyNotHandled;
        offerSelection(); // there is one if the key has selected something
    }
    changed();
    return kKeyConsumed;
}

void X11TextEdit::overlayText(const std::string& text)
{
    line.insert(text);
    changed();
}

// What the clipboard takes part in: Control with C, X and V, shift or Control with Insert and Delete.
bool X11TextEdit::command(const TovraKeyCode& code)
{
    const bool isControl = (code.modifiers & kKeyCommand) != 0;
    const bool isShift = (code.modifiers & kKeyShift) != 0;
    const auto key = isControl ? (code.character | 0x20) : 0; // lower case
    const bool isInsert = code.virtualKey == kVirtualInsert;
    const bool isCut = key == 'x' || (code.virtualKey == kVirtualDelete && isShift && !isControl);
    if (key == 'c' || (isInsert && isControl) || isCut)
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
