// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/envelope/KnobDrag.h"

#include "Orbel/parameters/ParameterCurve.h"
#include "Tovrane/window/MouseEvents.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
// The same bend on either side of the middle.
static float bentFromMiddle(float value, float bend)
{
    if (bend == 0.0f)
        return value;
    const float side = std::clamp(2.0f * value - 1.0f, -1.0f, 1.0f);
    return (std::copysign(Orbel::bendPosition(std::fabs(side), bend), side) + 1.0f) * 0.5f;
}

void KnobDrag::begin(const CEnvelopePoint& knob, double y, long buttons, float normalized, float direction)
{
    zone = knob.deadZone;
    bend = knob.bend;
    base = zone.widened(bentFromMiddle(normalized, -bend));
    way = direction;
    held = buttons & ~kDoubleClick;
    slope = (held & kModShift) != 0 ? fine : usual;
    start = y;
}

float KnobDrag::valueAt(double y, long buttons)
{
    buttons &= ~kDoubleClick;
    const float distance = way * float(start - y);
    if (buttons != held)
    {
        const float former = slope;
        slope = (buttons & kModShift) != 0 ? fine : afterFine;
        base += distance * (former - slope);
        held = buttons;
    }
    return bentFromMiddle(zone.narrowed(base + distance * slope), bend);
}
}
