// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/EditLinePainter.h"

#include "CORE/Utf8.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
namespace
{
constexpr double padding = 2.0;      // between the field's edge and its text, in pixels
constexpr double fontShare = 0.7;    // of the field's height
constexpr double smallestFont = 6.0; // in pixels
constexpr double largestFont = 200.0;

CColor opaque(CColor color)
{
    color.alpha = 255;
    return color;
}

// So much of b in a.
CColor between(CColor a, CColor b, double share)
{
    const auto mix = [share](unsigned char x, unsigned char y)
    { return static_cast<unsigned char>(std::floor(x + (y - x) * share + 0.5)); };
    return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), 255};
}

void fill(CDrawContext& context, const CRect& rect, CColor color)
{
    context.setFillColor(color);
    context.drawRect(rect, kFilled);
}
}

void EditLinePainter::setField(double width, double height, double clippedLeft, double clippedTop)
{
    fieldWidth = width;
    fieldHeight = height;
    left = clippedLeft;
    top = clippedTop;
    fontSize = std::clamp(std::floor(fieldHeight * fontShare + 0.5), smallestFont, largestFont);
}

// Where each character begins, by bytes, in pixels from the text's start; inside one, its start's.
std::vector<double> EditLinePainter::measure(CDrawContext& context, const EditLine& line) const
{
    context.setFont(&gNormalFont_NoLCD, fontSize, 0);
    const std::string& text = line.text();
    std::vector<double> edges(text.size() + 1, 0.0);
    for (std::size_t i = 1; i <= text.size(); ++i)
    {
        const bool isInside = i < text.size() && Core::Utf8::isContinuation(text[i]);
        edges[i] = isInside ? edges[i - 1] : context.getStringWidth(text.substr(0, i).c_str());
    }
    return edges;
}

void EditLinePainter::keepCaretInSight(const std::vector<double>& edges, std::size_t caret)
{
    const double room = std::max(fieldWidth - 2.0 * padding - 1.0, 1.0);
    scrolled = std::clamp(scrolled, edges[caret] - room, edges[caret]);
    scrolled = std::clamp(scrolled, 0.0, std::max(edges.back() - room, 0.0));
}

void EditLinePainter::draw(CDrawContext& context, const EditLine& line)
{
    const std::vector<double> edges = measure(context, line);
    keepCaretInSight(edges, line.caret());
    const CColor paper = opaque(back), ink = opaque(font);
    const double start = std::floor(padding - scrolled - left + 0.5);
    const double bottom = fieldHeight - top;
    fill(context, CRect(-left, -top, fieldWidth - left, bottom), paper);
    if (line.hasSelection())
        fill(context,
             CRect(start + std::floor(edges[line.selectionStart()]), 1.0 - top,
                   start + std::ceil(edges[line.selectionEnd()]), bottom - 1.0),
             between(paper, ink, isFocused ? 0.35 : 0.2));
    context.setFontColor(ink);
    context.drawString(line.text().c_str(), CRect(start, -top, start + edges.back() + fontSize, bottom + 1.0),
                       true, kTextLeft);
    const double caret = start + std::floor(edges[line.caret()] + 0.5);
    caretLeft = caret;
    if (isFocused && isCaretOn && !line.hasSelection())
        fill(context, CRect(caret, 2.0 - top, caret + 1.0, bottom - 2.0), ink);
}

std::size_t EditLinePainter::positionAt(CDrawContext& context, const EditLine& line, double x) const
{
    const std::vector<double> edges = measure(context, line);
    const double place = x + left + scrolled - padding;
    const auto isNearer = [place](double a, double b) { return std::fabs(a - place) < std::fabs(b - place); };
    return std::size_t(std::min_element(edges.begin(), edges.end(), isNearer) - edges.begin());
}
}
