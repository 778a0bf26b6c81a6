// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/headless/HeadlessTextEdit.h"

#include "Tovrane/window/ITextEditCallback.h"

namespace Tovra
{
HeadlessTextEdit::HeadlessTextEdit(HeadlessFrame& on, ITextEditCallback& heardBy)
    : frame(&on), callback(heardBy)
{
    HeadlessTextEdit::updateSize();
    handle.open(frame->overlays(), *this, OverlayKind::field);
}

bool HeadlessTextEdit::setText(const char* next)
{
    line.setText(next != nullptr ? next : "");
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

long HeadlessTextEdit::onKeyDown(TovraKeyCode& code)
{
    return overlayKeyDown(code, typedBy(code));
}

long HeadlessTextEdit::overlayKeyDown(const TovraKeyCode& code, const std::string& typed)
{
    const std::weak_ptr<bool> isThere = life;
    if (callback.textEditOnKeyDown(code) == kKeyConsumed || isThere.expired())
        return kKeyConsumed;
    const bool isReturn = code.virtualKey == kVirtualReturn || code.virtualKey == kVirtualKeypadEnter;
    if (!isReturn && code.virtualKey != kVirtualEscape)
        return line.key(code, typed) ? kKeyConsumed : kKeyNotHandled;
    callback.textEditLooseFocus(isReturn); // usually the end of this
    return kKeyConsumed;
}

void HeadlessTextEdit::type(const char* typed)
{
    line.insert(typed);
}

static TovraKeyCode codeOf(VirtualKey key)
{
    TovraKeyCode code;
    code.virtualKey = key;
    return code;
}

void HeadlessTextEdit::pressReturn()
{
    overlayKeyDown(codeOf(kVirtualReturn), "");
}

void HeadlessTextEdit::pressEscape()
{
    overlayKeyDown(codeOf(kVirtualEscape), "");
}
}
