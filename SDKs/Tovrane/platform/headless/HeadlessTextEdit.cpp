// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/headless/HeadlessTextEdit.h"

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/window/ITextEditCallback.h"

#include <algorithm>
#include <cstring>

namespace Tovra
{
HeadlessTextEdit::HeadlessTextEdit(HeadlessFrame& on, ITextEditCallback& heardBy)
    : frame(&on), callback(heardBy)
{
    painter.back = heardBy.textEditGetBackColor();
    painter.font = heardBy.textEditGetFontColor();
    HeadlessTextEdit::updateSize();
    handle.open(frame->overlays(), *this, OverlayKind::field);
}

bool HeadlessTextEdit::setText(const char* next)
{
    line.setText(next != nullptr ? next : "");
    painter.scrollBack();
    return true;
}

bool HeadlessTextEdit::updateSize()
{
    CRect size = callback.textEditGetSize();
    CRect part = callback.textEditGetVisibleSize();
    callback.convertPluginToWorld(size);
    callback.convertPluginToWorld(part);
    painter.setField(size.getWidth(), size.getHeight(), std::max(part.left - size.left, 0.0),
                     std::max(part.top - size.top, 0.0));
    visible = size.bound(part);
    return true;
}

void HeadlessTextEdit::drawOver(IOSBitmap& picture)
{
    CRect part = visible;
    part.roundOut();
    part.bound(CRect(0.0, 0.0, picture.getWidth(), picture.getHeight()));
    CMACBitmap field;
    if (part.isEmpty() || !field.setSize(unsigned(part.getWidth()), unsigned(part.getHeight())))
        return;
    PelmoAGG renderer;
    renderer.attach(field.getPixelPtr(), field.getWidth(), field.getHeight(), field.getRowBytes());
    const CRect all(0.0, 0.0, field.getWidth(), field.getHeight());
    painter.draw(*Kept<CDrawContext>::adopt(new CDrawContext({&renderer, &field, all}, nullptr)).get(), line);
    for (unsigned y = 0; y < field.getHeight(); ++y)
        std::memcpy(picture.getPixelPtr() + (long(part.top) + y) * picture.getRowBytes() +
                        4 * long(part.left),
                    field.getPixelPtr() + long(y) * field.getRowBytes(), std::size_t(field.getRowBytes()));
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
