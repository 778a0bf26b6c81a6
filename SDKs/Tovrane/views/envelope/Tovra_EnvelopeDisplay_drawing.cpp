// SPDX-License-Identifier: GPL-3.0-or-later
// How the envelope is drawn.
#include "Orbel/parameters/ParameterProperty.h"
#include "Orbel/parameters/ParameterText.h"
#include "Tovrane/draw/AggColor.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawPath.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/draw/PelmoCompOps.h"
#include "Tovrane/views/envelope/Tovra_EnvelopeDisplay.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
namespace
{
constexpr double hairline = 0.3;
constexpr double labelSize = 9.0; // of the font
constexpr double labelHeight = 12.0;

// On the middle of a unit, so that a line of width 1 is crisp.
double crisp(double coordinate)
{
    return std::floor(coordinate) + 0.5;
}

bool overlap(const CRect& a, const CRect& b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}
}

void Tovra_EnvelopeDisplay::draw(CDrawContext* context)
{
    settle();
    drawGrid(context, inner);
    context->setFillColor(kDisplayColor2);
    if (velocity > 0.0f)
        context->drawRect(
            {inner.left, inner.bottom - double(velocity) * inner.getHeight(), inner.right, inner.bottom},
            kFilled);
    drawEnvelopeLines(context, inner);
    if (mouseOver != nullptr)
        drawMouseOver(context, mouseOver);
    drawFocus(context);
    setDirty(false);
}

// The grid

void Tovra_EnvelopeDisplay::drawGrid(CDrawContext* context, const CRect& rect)
{
    context->setLineWidth(hairline);
    context->setFrameColor(kDisplayColor5);
    context->drawRect(rect, kStroked);
    drawGridX(context, rect);
    drawGridY(context, rect);
}

void Tovra_EnvelopeDisplay::drawGridX(CDrawContext* context, const CRect& rect)
{
    constexpr float times[] = {1, 2, 5, 10, 17, 25, 35, 50, 70, 100, 140, 200, 300, 400, 600};
    constexpr double halfLabel = 15.0;
    context->setLineWidth(hairline);
    context->setFrameColor(kDisplayColor2);
    context->setFont(kNormalFont, labelSize, 0);
    context->setFontColor(kDisplayTextColorDARK);
    double last = -10.0;
    CRect lastLabel;
    for (const float time : times)
    {
        const double x = crisp(convertTimeToX(nullptr, time) + rect.left);
        if (x > rect.right)
            return;
        if (x - last <= 1.0)
            continue;
        last = x;
        context->line(x, rect.top + 1.0, x, rect.bottom);
        const CRect label(x - halfLabel, rect.bottom, x + halfLabel, rect.bottom + labelHeight);
        if (overlap(label, lastLabel))
            continue;
        lastLabel = label;
        context->drawString(std::to_string(int(time)).c_str(), label);
    }
}

void Tovra_EnvelopeDisplay::drawGridY(CDrawContext* context, const CRect& rect)
{
    constexpr double levels[] = {0.0, 0.75, 0.5, 0.25};
    context->setFont(kNormalFont, labelSize, 0);
    context->setFontColor(kDisplayTextColorDARK);
    context->setLineWidth(0.5);
    context->setFrameColor(kDisplayColor1);
    for (const double level : levels)
    {
        const double y = (1.0 - level) * rect.getHeight();
        const double line = crisp(rect.top + y);
        context->line(crisp(rect.left + 1.0), line, crisp(rect.right - 1.0), line);
        const std::string text = std::to_string(int(level * 100.0)) + "%";
        context->drawString(text.c_str(), {rect.left + 2.0, line - 9.0, rect.left + 42.0, line - 1.0}, true,
                            kTextLeft);
    }
}

// The lines

// A point of the line for each unit of width.
void Tovra_EnvelopeDisplay::traceSegment(CDrawPath& path, const CPoint& from, const CPoint& to,
                                         float curve) const
{
    const int steps = int(to.x - from.x);
    for (int i = 0; i < steps; ++i)
    {
        const CPoint at = curves.coordinate(from, to, curve, float(i) / float(steps));
        path.lineTo(float(at.x), float(at.y));
    }
    path.lineTo(float(to.x), float(to.y));
}

void Tovra_EnvelopeDisplay::drawSegment(CDrawContext* context, const CEnvelopePoint& from,
                                        const CEnvelopePoint& to)
{
    const bool glows = mouseOver != nullptr && mouseOver->isKnob() && pointAt(mouseOver->next) == &to;
    const CColor usual = envelopeEnabled ? kDisplayColorBand : kDisplayColor2;
    constexpr double lineWidth = 2.0;
    context->setLineWidth(lineWidth);
    context->setFrameColor(glows ? kDisplayColorBand_glow : usual);
    CDrawPath path(context);
    const CPoint a = absolute(from.place), b = absolute(to.place);
    path.moveTo(float(a.x), float(a.y));
    traceSegment(path, a, b, to.curve);
    path.finish(kStroked, true);
}

std::optional<CRect> Tovra_EnvelopeDisplay::dotPlace() const
{
    constexpr double radius = 3.0;
    if (envelopePosition < 0 || envelopePosition >= int(points.size()))
        return {};
    const CEnvelopePoint& to = points[size_t(envelopePosition)];
    const CEnvelopePoint* const from = segmentStart(to);
    if (from == nullptr || to.isKnob())
        return {};
    const CPoint at = absolute(curves.coordinate(from->place, to.place, to.curve, positionFraction));
    return CRect(at.x - radius, at.y - radius, at.x + radius, at.y + radius);
}

void Tovra_EnvelopeDisplay::drawDot(CDrawContext* context)
{
    context->setFillColor({255, 0, 0, 255});
    if (const std::optional<CRect> place = dotPlace())
        context->drawEllipse(*place, kFilled);
}

void Tovra_EnvelopeDisplay::fillBelow(CDrawContext* context)
{
    constexpr double beyond = 2.0; // the edges, so that they are not seen
    const auto shade = [this](double alpha)
    {
        CColor color = kDisplayColorBand;
        color.alpha = static_cast<unsigned char>(std::clamp(alpha * double(gradientStrength), 0.0, 255.0));
        return aggColorFromCColor(color);
    };
    const agg::rgba8 strong = shade(110.0), weak = shade(50.0);
    double base = isGradientInverted ? inner.top : inner.bottom;
    if (isGradientFromCentre)
        base = (inner.top + inner.bottom) / 2.0;
    CDrawPath path(context);
    path.moveTo(float(inner.left - beyond), float(base));
    double right = inner.left;
    for (const CEnvelopePoint& to : points)
    {
        const CEnvelopePoint* const from = to.isKnob() ? nullptr : segmentStart(to);
        if (from == nullptr)
            continue;
        const CPoint a = absolute(from->place);
        path.lineTo(float(a.x), float(a.y));
        traceSegment(path, a, absolute(to.place), to.curve);
        right = absolute(to.place).x;
    }
    path.lineTo(float(right + beyond), float(base));
    path.closePath();
    const CPoint offset = context->getOffset();
    context->getAGGRenderer()->fillLinearGradient(
        inner.left + offset.x, inner.top + offset.y, inner.left + offset.x, inner.bottom + offset.y,
        isGradientInverted ? weak : strong, isGradientInverted ? strong : weak, 1.0);
    path.finish(kFilled, true);
}

void Tovra_EnvelopeDisplay::drawEnvelopeLines(CDrawContext* context, const CRect& rect)
{
    if (hasGradient)
        fillBelow(context);
    for (const CEnvelopePoint& to : points)
        if (const CEnvelopePoint* const from = to.isKnob() ? nullptr : segmentStart(to))
            drawSegment(context, *from, to);
    drawDot(context);
    drawEnvelopeHandles(context, rect);
}

// The handles

void Tovra_EnvelopeDisplay::drawHandle(CDrawContext* context, const CEnvelopePoint& point, bool isBlinking)
{
    const auto alpha = static_cast<unsigned char>(envelopeEnabled ? 200 : 50);
    if (handleBitmap == nullptr)
    {
        CColor color = kDisplayTextColor;
        color.alpha = &point == mouseOver ? static_cast<unsigned char>(255) : alpha;
        context->setFillColor(color);
        context->drawEllipse(point.handle, kFilled);
        return;
    }
    CRect place = point.handle;
    handleBitmap->drawAlphaBlend(context, place, CPoint(), alpha);
    PelmoAGG* const renderer = context->getAGGRenderer();
    if (&point == mouseOver)
    {
        const BlendMode usualMode = renderer->blendMode();
        renderer->blendMode(kBlendColorDodge);
        handleBitmap->drawAlphaBlend(context, place, CPoint(), alpha);
        renderer->blendMode(usualMode);
    }
    if (isBlinking && hasThreeRows)
        handleBitmap->drawAlphaBlend(context, place, CPoint(0.0, 2.0 * handleHeight), alpha);
}

void Tovra_EnvelopeDisplay::drawEnvelopeHandles(CDrawContext* context, const CRect& rect)
{
    for (size_t i = 0; i < points.size(); ++i)
    {
        const CEnvelopePoint& point = points[i];
        const CPoint middle((point.handle.left + point.handle.right) / 2.0,
                            (point.handle.top + point.handle.bottom) / 2.0);
        if (point.type == CEnvelopePoint::fixed || point.isKnob() || !isWithinEdges(rect, middle))
            continue;
        const bool isBlinking = blinks[i] > 0;
        blinks[i] -= isBlinking ? 1 : 0;
        drawHandle(context, point, isBlinking);
    }
}

// The label of a point: one line for each of its parameters

void Tovra_EnvelopeDisplay::drawMouseOver(CDrawContext* context, const CEnvelopePoint* point)
{
    std::vector<std::string> lines;
    const auto add = [&lines](Orbel::ParameterProperty* property)
    {
        char text[Orbel::kParameterTextSize] = {};
        Orbel::renderPropertyText(property, text, true, true, true);
        lines.emplace_back(text);
    };
    const CPoint at = absolute(point->place);
    context->setLineWidth(hairline);
    context->setFrameColor(kDisplayColor5);
    if (point->timeProperty != nullptr)
    {
        context->line(at.x, inner.top, at.x, inner.bottom - 1.0);
        char text[Orbel::kParameterTextSize] = {};
        if (absoluteTimeText)
            Orbel::Helpers::renderValuesAsString(text, point->startTime + point->duration,
                                                 point->timeProperty);
        if (absoluteTimeText)
            lines.emplace_back(text);
        else
            add(point->timeProperty);
    }
    if (point->levelProperty != nullptr)
    {
        context->line(inner.left + 1.0, at.y, at.x, at.y);
        add(point->levelProperty);
    }
    if (lines.empty() && point->curveProperty != nullptr)
        add(point->curveProperty);
    if (lines.empty())
        return;

    context->setFont(kNormalFont, labelSize, 0);
    double width = 0.0;
    for (const std::string& line : lines)
        width = std::max(width, context->getStringWidth(line.c_str()));
    CRect label(point->handle.right, point->handle.top, point->handle.right + width + 4.0,
                point->handle.top + labelHeight * double(lines.size()));
    label.bounce(size);
    context->setFrameColor(kDisplayTextColor);
    context->setFillColor({0, 0, 0, 200});
    context->setLineWidth(0.5);
    context->drawRoundRect(label, 3.0f, kFilledAndStroked);
    context->setFontColor(kDisplayTextColor);
    for (size_t i = 0; i < lines.size(); ++i)
        context->drawString(lines[i].c_str(), {label.left, label.top + labelHeight * double(i), label.right,
                                               label.top + labelHeight * double(i + 1)});
}
}
