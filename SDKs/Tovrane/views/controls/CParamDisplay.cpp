// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/CParamDisplay.h"

#include "CORE/Numbers.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CFontDesc.h"

#include <cstring>

namespace Tovra
{
CParamDisplay::CParamDisplay(const CRect& rect, CBitmap* bitmap, long bits)
    : CControl(rect, nullptr, 0, bitmap), font(kNormalFont), style(bits)
{
}

CParamDisplay::CParamDisplay(const CTextLabelInfo& info)
    : CControl(info),
      font(info.font != nullptr ? info.font : kNormalFont),
      fontSize(info.font != nullptr ? info.fontSize : 0),
      fontColor(info.textColor),
      frameColor(info.frameColor),
      alignment(info.alignment),
      style(info.style)
{
    setTransparency(info.transparency);
    setMouseEnabled(info.mouseEnabled);
    if (!info.mouseEnabled)
        setMouseableArea(CRect());
}

bool CParamDisplay::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CParamDisplay") == 0) || CControl::isTypeOf(name);
}

template <typename Value>
void CParamDisplay::change(Value& member, const Value& next)
{
    if (member == next)
        return;
    member = next;
    setDirty(true);
}

void CParamDisplay::setFont(CFontDesc* newFont, int newSize)
{
    change(font, newFont);
    change(fontSize, newSize);
}

void CParamDisplay::setFontColor(CColor color)
{
    change(fontColor, color);
}

void CParamDisplay::setBackColor(CColor color)
{
    change(backColor, color);
}

void CParamDisplay::setFrameColor(CColor color)
{
    change(frameColor, color);
}

void CParamDisplay::setShadowColor(CColor color)
{
    change(shadowColor, color);
}

void CParamDisplay::setHoriAlign(CHoriTxtAlign align)
{
    change(alignment, align);
}

void CParamDisplay::setStyle(long bits)
{
    change(style, bits);
}

void CParamDisplay::setTxtFace(CTxtFace newFace)
{
    change(face, newFace);
}

void CParamDisplay::setStringConvert(std::function<std::string(float)> convert)
{
    toText = std::move(convert);
    setDirty(true);
}

void CParamDisplay::setString2FloatConvert(std::function<bool(const char*, float&)> convert)
{
    toValue = std::move(convert);
}

std::string CParamDisplay::textOfValue() const
{
    if (toText)
        return toText(value);
    return Core::formatFixed(value, 2);
}

bool CParamDisplay::valueOfText(const char* text, float& read) const
{
    if (toValue)
        return toValue(text, read);
    const auto number = Core::findNumber(text);
    if (number)
        read = float(*number);
    return number.has_value();
}

void CParamDisplay::draw(CDrawContext* context)
{
    drawBack(context);
    drawText(context, textOfValue(), size);
    setDirty(false);
}

// The frame lies on whole pixels, inside the box.
void CParamDisplay::drawBack(CDrawContext* context)
{
    if (CBitmap* const bitmap = getBackground())
        return getTransparency() ? bitmap->drawTransparent(context, size, getBackOffset())
                                 : bitmap->draw(context, size, getBackOffset());
    context->setLineWidth(1.0);
    if ((style & kNoBack) == 0)
    {
        context->setFillColor(backColor);
        context->drawRect(size, kFilled);
    }
    if ((style & kNoFrame) != 0)
        return;
    context->setFrameColor(frameColor);
    context->drawRect(CRect(size.left + 0.5, size.top + 0.5, size.right - 0.5, size.bottom - 0.5), kStroked);
}

void CParamDisplay::drawText(CDrawContext* context, const std::string& text, const CRect& rect)
{
    constexpr double margin = 2.0;
    const double own = font->getSize();
    context->setFont(font, fontSize, face);
    CRect inside(rect.left + margin, rect.top, rect.right - margin, rect.bottom);
    if ((style & kShadowText) != 0)
    {
        CRect below = inside;
        context->setFontColor(shadowColor);
        context->drawString(text.c_str(), below.offset(1.0, 1.0), true, alignment);
    }
    context->setFontColor(fontColor);
    context->drawString(text.c_str(), inside, true, alignment);
    font->setSize(own);
}

CTextLabel::CTextLabel(const CRect& rect, const char* shown, CBitmap* bitmap, long bits)
    : CParamDisplay(rect, bitmap, bits), text(shown != nullptr ? shown : "")
{
}

bool CTextLabel::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CTextLabel") == 0) || CParamDisplay::isTypeOf(name);
}

void CTextLabel::setText(const char* next)
{
    const std::string wanted = next != nullptr ? next : "";
    if (text == wanted)
        return;
    text = wanted;
    setDirty(true);
}

void CTextLabel::draw(CDrawContext* context)
{
    drawBack(context);
    drawText(context, text, size);
    setDirty(false);
}
}
