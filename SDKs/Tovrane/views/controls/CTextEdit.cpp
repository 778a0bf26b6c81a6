// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/CTextEdit.h"

#include "CORE/Utf8.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/views/tree/CFrame.h"

#include <cstring>
#include <utility>

namespace Tovra
{
static std::string cutToField(const std::string& text)
{
    return std::string(Core::Utf8::cut(text, IOSTextEdit::textSize - 1));
}

CTextEdit::CTextEdit(const CRect& rect, CControlListener* heardBy, long withTag, const char* shown,
                     CBitmap* bitmap, long bits)
    : CParamDisplay(rect, bitmap, bits), text(cutToField(shown != nullptr ? shown : ""))
{
    setListener(heardBy);
    setTag(withTag);
    setWantsFocus(true);
}

CTextEdit::CTextEdit(const CTextLabelInfo& info) : CParamDisplay(info)
{
    setWantsFocus(true);
}

CTextEdit::~CTextEdit() = default;

bool CTextEdit::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CTextEdit") == 0) || CParamDisplay::isTypeOf(name);
}

void CTextEdit::setText(const char* next)
{
    const std::string wanted = cutToField(next != nullptr ? next : "");
    if (text == wanted)
        return;
    text = wanted;
    if (field != nullptr)
        field->setText(text.c_str());
    setDirty(true);
}

void CTextEdit::setTextEditConvert(std::function<bool(std::string&)> convert)
{
    convertTyped = std::move(convert);
}

// The field

void CTextEdit::edit()
{
    if (field != nullptr || getFrame() == nullptr || !isEditable() || !isEnabled())
        return;
    const Kept<CTextEdit> self(this);
    getFrame()->setFocusView(this);
    if (getFrame() == nullptr)
        return;
    field.reset(getFrame()->createOSTextEdit(this, this));
    if (field != nullptr)
        field->setText(editedText().c_str());
}

void CTextEdit::closeField(bool takesText)
{
    const Kept<CTextEdit> self(this);
    const std::unique_ptr<IOSTextEdit> closing = std::exchange(field, nullptr);
    if (closing == nullptr)
        return;
    std::string typed = closing->getText();
    setDirty(true);
    if (takesText && typed != editedText() && (!convertTyped || convertTyped(typed)))
        commit(typed);
}

void CTextEdit::commit(const std::string& typed)
{
    beginEdit();
    setText(typed.c_str());
    if (getListener() != nullptr)
        getListener()->valueChanged(this);
    endEdit();
}

void CTextEdit::looseFocus()
{
    closeField(true);
}

void CTextEdit::textEditLooseFocus(bool byReturn)
{
    const Kept<CTextEdit> self(this);
    closeField(byReturn);
    if (getFrame() != nullptr && getFrame()->getFocusView() == this)
        getFrame()->setFocusView(nullptr);
}

bool CTextEdit::removed(CView* parent)
{
    closeField(false);
    return CParamDisplay::removed(parent);
}

void CTextEdit::setViewSize(const CRect& rect, bool invalidate)
{
    CParamDisplay::setViewSize(rect, invalidate);
    if (field != nullptr)
        field->updateSize();
}

CColor CTextEdit::textEditGetBackColor() const
{
    return getBackColor();
}

CColor CTextEdit::textEditGetFontColor() const
{
    return getFontColor();
}

CRect CTextEdit::textEditGetSize() const
{
    CPoint topLeft = size.getTopLeft();
    CRect place = size;
    return place.moveTo(localToFrame(topLeft));
}

CRect CTextEdit::textEditGetVisibleSize() const
{
    CRect place = getVisibleSize();
    CPoint topLeft = place.getTopLeft();
    return place.moveTo(localToFrame(topLeft));
}

long CTextEdit::textEditOnKeyDown(const TovraKeyCode&)
{
    return kKeyNotHandled;
}

void CTextEdit::convertPluginToWorld(CRect& rect) const
{
    if (getFrame() != nullptr)
        getFrame()->convertPluginToWorld(rect);
}

// Events

MouseEventResult CTextEdit::onMouseDown(CPoint&, const long& buttons)
{
    if ((buttons & kButtonLeft) == 0 || !isEditable())
        return kMouseUnhandled;
    edit();
    return kMouseHandledNoMoves;
}

long CTextEdit::onKeyDown(TovraKeyCode& code)
{
    if (field != nullptr)
        return field->onKeyDown(code);
    if (code.virtualKey != kVirtualReturn || getFrame() == nullptr || getFrame()->getFocusView() != this ||
        !isEditable())
        return kKeyNotHandled;
    edit();
    return kKeyConsumed;
}

long CTextEdit::onKeyUp(TovraKeyCode& code)
{
    return field != nullptr ? field->onKeyUp(code) : kKeyNotHandled;
}

void CTextEdit::draw(CDrawContext* context)
{
    drawBack(context);
    drawText(context, text, size);
    drawFocus(context);
    setDirty(false);
}
}
