// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/gallery/Sketch.h"

#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/PelmoAGG.h"

using namespace Tovra;

namespace Gallery
{
Sketch::Sketch(const CRect& rect, Draw by) : CView(rect), drawing(std::move(by)) {}

void Sketch::draw(CDrawContext* context)
{
    const CPoint offset = context->getOffset();
    context->setOffset(offset + size.getTopLeft());
    drawing(*context);
    context->setOffset(offset);
    context->getAGGRenderer()->blendMode(kBlendAlpha);
    setDirty(false);
}

void drawText(CDrawContext& context, const std::string& text, const CRect& rect, CHoriTxtAlign align,
              CColor color, double size, long style)
{
    context.setFont(kNormalFont, size, style);
    context.setFontColor(color);
    context.drawString(text.c_str(), rect, true, align);
    kNormalFont->setSize(12.0);
}

void drawCaption(CDrawContext& context, const std::string& text, const CRect& rect, CHoriTxtAlign align)
{
    drawText(context, text, rect, align, faint, 11.0);
}

void drawPanel(CDrawContext& context, const CRect& rect, CColor color)
{
    context.setFillColor(edge);
    context.drawRect(rect, kFilled);
    context.setFillColor(color);
    context.drawRect({rect.left + 1, rect.top + 1, rect.right - 1, rect.bottom - 1}, kFilled);
}
}
