// SPDX-License-Identifier: GPL-3.0-or-later
// How a message looks: where its parts are, and how they are drawn.
#include "Tovrane/views/controls/CMessageView.h"

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/OwnColors.h"
#include "Tovrane/views/controls/WrappedText.h"
#include "Tovrane/views/tree/CFrame.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
namespace
{
using namespace OwnColors::Message;

constexpr double titleSize = 13.0;
constexpr double textSize = 12.0;
constexpr double lineHeight = 16.0;
constexpr double titleHeight = 20.0;
constexpr double padding = 16.0;
constexpr double margin = 10.0; // between the box and the frame
constexpr double widest = 380.0;
constexpr double buttonWidth = 72.0;
constexpr double buttonHeight = 24.0;
constexpr double gap = 12.0;

void setFont(CDrawContext& context, double fontSize, long style)
{
    context.setFont(&gNormalFont_NoLCD, fontSize, style);
    gNormalFont_NoLCD.setSize(textSize);
}

CRect shrunk(const CRect& rect, double by)
{
    return CRect(rect.left + by, rect.top + by, rect.right - by, rect.bottom - by);
}

// Its line lies on half units: one row of pixels, not two half ones.
void drawPlate(CDrawContext& context, const CRect& rect, CColor fill, CColor line, double lineWidth)
{
    context.setFillColor(fill);
    context.drawRoundRect(rect, 4.0F, kFilled);
    context.setFrameColor(line);
    context.setLineWidth(lineWidth);
    context.drawRoundRect(shrunk(rect, 0.5 * lineWidth), 4.0F, kStroked);
}
}

void CMessageView::layOut()
{
    if (getFrame() == nullptr)
        return;
    const auto context = Kept<CDrawContext>::adopt(getFrame()->createDrawContext());
    const TextMeasure measure = [&](const std::string& text)
    { return context->getStringWidth(text.c_str()); };
    const double width = std::max(2.0 * padding + 2.0 * buttonWidth + gap,
                                  std::min(widest, std::floor(size.getWidth() - 2.0 * margin)));
    setFont(*context.get(), titleSize, 1);
    title = shortenText(message.title, width - 2.0 * padding, measure);
    setFont(*context.get(), textSize, 0);
    lines = wrapText(message.body, width - 2.0 * padding, measure);
    const double others = 2.0 * margin + 2.0 * padding + titleHeight + 2.0 * gap + buttonHeight;
    const auto mostLines = std::size_t(std::max(1.0, (size.getHeight() - others) / lineHeight));
    if (lines.size() > mostLines)
    {
        lines.resize(mostLines);
        lines.back() = shortenText(lines.back() + " \xE2\x80\xA6", width - 2.0 * padding, measure);
    }
    placeBox(width, lines.size());
}

void CMessageView::placeBox(double width, std::size_t lineCount)
{
    const double height =
        2.0 * padding + titleHeight + 2.0 * gap + buttonHeight + double(lineCount) * lineHeight;
    const double left = std::floor(size.left + 0.5 * (size.getWidth() - width));
    const double top = std::floor(size.top + std::max(0.0, 0.5 * (size.getHeight() - height)));
    box = CRect(left, top, left + width, top + height);
    double right = box.right - padding;
    for (int i = buttonCount(); i-- > 0; right -= buttonWidth + gap)
        buttons[std::size_t(i)].rect =
            CRect(right - buttonWidth, box.bottom - padding - buttonHeight, right, box.bottom - padding);
}

void CMessageView::draw(CDrawContext* context)
{
    context->setFillColor(dim);
    context->drawRect(size, kFilled);
    drawPlate(*context, box, ground, edge, 1.0);
    drawTexts(*context);
    for (int i = 0; i < buttonCount(); ++i)
        drawButton(*context, i);
    setDirty(false);
}

void CMessageView::drawTexts(CDrawContext& context) const
{
    const double left = box.left + padding;
    const double right = box.right - padding;
    double top = box.top + padding - 2.0;
    setFont(context, titleSize, 1);
    context.setFontColor(OwnColors::accent);
    context.drawString(title.c_str(), CRect(left, top, right, top + titleHeight), true, kTextLeft);
    top += titleHeight + gap;
    setFont(context, textSize, 0);
    context.setFontColor(OwnColors::Message::text);
    for (const std::string& line : lines)
    {
        context.drawString(line.c_str(), CRect(left, top, right + 1.0, top + lineHeight + 1.0), true,
                           kTextLeft);
        top += lineHeight;
    }
}

// The focus shows in the width of the line, too, not in its colour alone.
void CMessageView::drawButton(CDrawContext& context, int number) const
{
    const Button& button = buttons[std::size_t(number)];
    const bool isDown = pressed == number && hovered == number;
    const bool isLit = hovered == number && (pressed < 0 || pressed == number);
    const bool isFocused = focused == number;
    drawPlate(context, button.rect,
              isDown  ? buttonPressed
              : isLit ? buttonLit
                      : OwnColors::Message::button,
              isFocused ? OwnColors::accent : edge, isFocused ? 2.0 : 1.0);
    setFont(context, textSize, 0);
    context.setFontColor(isDown || isFocused ? OwnColors::accent : OwnColors::Message::text);
    CRect text = button.rect;
    text.offset(0.0, isDown ? 1.0 : 0.0);
    context.drawString(button.text, CRect(text.left, text.top, text.right, text.bottom + 1.0), true,
                       kTextCenter);
}
}
