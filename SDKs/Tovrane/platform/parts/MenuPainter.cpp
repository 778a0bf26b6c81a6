// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/MenuPainter.h"

#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/OwnColors.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
namespace
{
using namespace OwnColors::Menu;
constexpr double fontSize = 12.0;

void fill(CDrawContext& context, const CRect& rect, CColor color)
{
    context.setFillColor(color);
    context.drawRect(rect, kFilled);
}
}

double MenuPainter::textWidth(CDrawContext& context, const std::string& shown) const
{
    context.setFont(&gNormalFont_NoLCD, fontSize * scale, 0);
    return context.getStringWidth(shown.c_str());
}

void MenuPainter::draw(CDrawContext& context, const MenuRows& rows, const View& view) const
{
    const CRect all(0.0, 0.0, view.width, view.height);
    fill(context, all, edge);
    const CRect inner(1.0, 1.0, view.width - 1.0, view.height - 1.0);
    fill(context, inner, ground);
    context.setFont(&gNormalFont_NoLCD, fontSize * scale, 0);
    for (int i = 0; i < rows.count(); ++i)
        if (rows[i].top + rows[i].height > view.scrolled && rows[i].top < view.scrolled + view.height)
            drawRow(context, rows, rows[i], view, i == view.marked);
    if (view.scrolled > 0)
        drawStrip(context, view, false);
    if (view.scrolled + view.height < rows.height())
        drawStrip(context, view, true);
    // Rows that stick out at the ends have drawn over the edge.
    fill(context, CRect(0.0, 0.0, view.width, 1.0), edge);
    fill(context, CRect(0.0, view.height - 1.0, view.width, view.height), edge);
}

void MenuPainter::drawRow(CDrawContext& context, const MenuRows& rows, const MenuRow& row, const View& view,
                          bool isMarked) const
{
    const double top = row.top - view.scrolled;
    const double bottom = top + row.height;
    const double middle = std::floor(top + row.height * 0.5);
    if (row.kind == MenuRow::separator)
        return fill(context, CRect(8.0 * scale, middle, view.width - 8.0 * scale, middle + 1.0), line);
    const bool isLit = isMarked && row.isReachable();
    if (isLit)
        fill(context, CRect(1.0, top, view.width - 1.0, bottom), mark);
    const bool isFaint = !row.isEnabled || row.kind == MenuRow::title;
    context.setFontColor(isFaint ? faintText : isLit ? markedText : text);
    context.setFrameColor(context.getFontColor());
    if (row.isChecked)
        drawCheck(context, middle);
    double left = MenuRows::textLeft * scale;
    if (row.icon != nullptr)
    {
        const double room = (MenuRows::iconWidth - 4) * scale;
        const double y = std::max(top, std::floor(middle - row.icon->getHeight() * 0.5));
        row.icon->draw(&context,
                       CRect(left, y, left + std::min(room, row.icon->getWidth()),
                             std::min(bottom, y + row.icon->getHeight())),
                       CPoint());
    }
    left += rows.hasIcons() ? MenuRows::iconWidth * scale : 0.0;
    const double right = view.width - MenuRows::textRight * scale;
    const double keyWidth = row.key.empty() ? 0.0 : std::ceil(context.getStringWidth(row.key.c_str()));
    context.drawString(row.text.c_str(), CRect(left, top, right - keyWidth + 1.0, bottom), true, kTextLeft);
    if (!row.key.empty())
        context.drawString(row.key.c_str(), CRect(right - keyWidth - 1.0, top, right + 1.0, bottom), true,
                           kTextRight);
    if (row.kind == MenuRow::submenu)
        drawArrow(context, view.width - 13.0 * scale, middle, true, false);
}

void MenuPainter::drawCheck(CDrawContext& context, double middle) const
{
    const auto x = [this](double units) { return units * scale; };
    const auto y = [this, middle](double units) { return middle + units * scale; };
    context.setLineWidth(1.6 * scale);
    context.line(x(9.0), y(0.0), x(12.0), y(3.5));
    context.line(x(12.0), y(3.5), x(18.0), y(-4.0));
}

void MenuPainter::drawArrow(CDrawContext& context, double x, double y, bool sideways, bool downwards) const
{
    const double half = 3.5 * scale;
    const double tip = (downwards || sideways ? 2.0 : -2.0) * scale;
    context.setLineWidth(1.4 * scale);
    if (sideways)
    {
        context.line(x - tip, y - half, x + tip, y);
        context.line(x + tip, y, x - tip, y + half);
        return;
    }
    context.line(x - half, y - tip, x, y + tip);
    context.line(x, y + tip, x + half, y - tip);
}

void MenuPainter::drawStrip(CDrawContext& context, const View& view, bool atBottom) const
{
    const double top = atBottom ? view.height - 1.0 - stripHeight() : 1.0;
    fill(context, CRect(1.0, top, view.width - 1.0, top + stripHeight()), ground);
    context.setFrameColor(text);
    drawArrow(context, std::floor(view.width * 0.5), top + std::floor(stripHeight() * 0.5), false, atBottom);
}
}
