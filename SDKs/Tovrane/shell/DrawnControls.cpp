// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/shell/DrawnControls.h"

#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/views/controls/DisplayColors.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Tovra
{
void drawOnOffSwitch(CRect rect, CDrawContext* context, Orbel::ParameterProperty* property)
{
    constexpr float start = -60.0f, sweep = 300.0f; // open at the top
    if (property == nullptr)
        return;
    const CRect ring(rect.left + 1.0, rect.top + 1.0, rect.right - 1.0, rect.bottom - 1.0);
    const double middle = (ring.left + ring.right) / 2.0;
    context->setLineWidth(1.5);
    context->setFrameColor(property->getCurrentValue_asBOOL() ? kDisplayColor3 : kDisplayColor2);
    context->drawArc(ring, start, sweep, kStroked);
    context->line(middle, (ring.top + ring.bottom) / 2.0, middle, ring.top);
}

static void drawPointer(CDrawContext* context, const CRect& ring, double value)
{
    constexpr double lowerLeft = 0.75 * std::numbers::pi, sweep = 1.5 * std::numbers::pi;
    constexpr double from = 0.4, to = 0.9; // of the radius
    const double angle = lowerLeft + sweep * value;
    const double x = (ring.left + ring.right) / 2.0, y = (ring.top + ring.bottom) / 2.0;
    const double dx = std::cos(angle) * ring.getWidth() / 2.0, dy = std::sin(angle) * ring.getHeight() / 2.0;
    context->setLineWidth(2.5);
    context->line(x + from * dx, y + from * dy, x + to * dx, y + to * dy);
}

void drawKnob(CRect rect, CDrawContext* context, Orbel::ParameterProperty* property, const char* label,
              bool isEnabled)
{
    constexpr double textSize = 10.0, textHeight = 14.0;
    const bool hasLabel = label != nullptr && *label != 0;
    const double side = std::min(rect.getWidth(), rect.getHeight() - (hasLabel ? textHeight : 0.0));
    const double left = (rect.left + rect.right - side) / 2.0;
    constexpr double inset = 0.5; // for the line
    const CRect ring(left + inset, rect.top + inset, left + side - inset, rect.top + side - inset);

    context->setFillColor(isEnabled ? kHighlightColor : kTransparentCColor);
    context->setFrameColor(isEnabled ? kDisplayTextColor : kDisplayColor5);
    context->setLineWidth(0.8);
    context->drawEllipse(ring, kFilledAndStroked);
    drawPointer(context, ring, property != nullptr ? double(property->getCurrentValue_normalized()) : 0.0);
    if (!hasLabel)
        return;
    context->setFont(kNormalFont, textSize, 0);
    context->setFontColor(kDisplayColor5);
    context->drawString(label, CRect(rect.left, ring.bottom, rect.right, ring.bottom + textHeight));
}
}
