// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/headless/HeadlessTextEdit.h"

#include "CORE/Utf8.h"
#include "Tovrane/window/ITextEditCallback.h"

namespace Tovra
{
HeadlessTextEdit::HeadlessTextEdit(HeadlessFrame& on, ITextEditCallback& heardBy)
    : frame(&on), callback(heardBy)
{
    HeadlessTextEdit::updateSize();
    handle.open(frame->overlays(), *this, OverlayKind::field);
}

static std::string cutToField(std::string text)
{
    text.resize(Core::Utf8::align(text, IOSTextEdit::textSize - 1));
    return text;
}

bool HeadlessTextEdit::setText(const char* next)
{
    text = cutToField(next != nullptr ? next : "");
    allSelected = true;
    return true;
}

bool HeadlessTextEdit::updateSize()
{
    CRect size = callback.textEditGetSize();
    CRect part = callback.textEditGetVisibleSize();
    callback.convertPluginToWorld(size);
    callback.convertPluginToWorld(part);
    visible = size.bound(part);
    return true;
}

bool HeadlessTextEdit::isTakenByView(const TovraKeyCode& code)
{
    return callback.textEditOnKeyDown(code) == kKeyConsumed;
}

void HeadlessTextEdit::type(const char* typed)
{
    text = cutToField((allSelected ? std::string() : text) + typed);
    allSelected = false;
}

void HeadlessTextEdit::pressReturn()
{
    TovraKeyCode code;
    code.virtualKey = kVirtualReturn;
    if (!isTakenByView(code))
        callback.textEditLooseFocus(true);
}

void HeadlessTextEdit::pressEscape()
{
    TovraKeyCode code;
    code.virtualKey = kVirtualEscape;
    if (!isTakenByView(code))
        callback.textEditLooseFocus(false);
}
}
