// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/ValueDrag.h"

#include "Tovrane/window/MouseEvents.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
constexpr long fineButtons = kButtonRight | kModShift;

float DeadZone::widened(float value) const
{
    constexpr float atTheCentre = 0.00001f;
    if (!isOn || std::fabs(value - centre) < atTheCentre)
        return value;
    return value >= centre ? value + width : value - width;
}

float DeadZone::narrowed(float dragged) const
{
    if (!isOn)
        return dragged;
    if (dragged > centre + width)
        return dragged - width;
    return dragged < centre - width ? dragged + width : centre;
}

void ValueDrag::setRange(float length)
{
    range = length > 0.0f && std::isfinite(length) ? length : usualRange;
}

float ValueDrag::slope(long forButtons) const
{
    return (high - low) / (range * ((forButtons & fineButtons) != 0 ? zoom : 1.0f));
}

void ValueDrag::begin(const CPoint& where, long held, float value, float minimum, float maximum)
{
    anchor = last = where;
    buttons = held;
    low = minimum;
    high = maximum;
    start = zone.widened(value);
}

float ValueDrag::valueAt(const CPoint& where, long held, bool across)
{
    last = where;
    const float way = float(anchor.y - where.y + (across ? where.x - anchor.x : 0.0));
    if (((held ^ buttons) & fineButtons) != 0)
        start += (slope(buttons) - slope(held)) * way;
    buttons = held;
    return std::clamp(zone.narrowed(start + way * slope(held)), low, high);
}
}
