// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/envelope/EnvelopeCurves.h"

#include "Orbel/parameters/ParameterCurve.h"

#include <cmath>

namespace Tovra
{
float get_Exp_ASC(float t, float bend)
{
    return Orbel::bendPosition(t, bend);
}

float get_Exp_ASC_pow(float t, float bend)
{
    if (bend == 0.0f)
        return t;
    const float y = bend < 0.0f ? 1.0f - std::pow(1.0f - t, 1.0f - bend) : std::pow(t, 1.0f + bend);
    return std::fpclassify(y) == FP_SUBNORMAL ? 0.0f : y;
}

float get_Exp_ASC_Static_pow3(float t, float bend)
{
    if (bend >= 0.0f)
        return t + (t * t * t - t) * bend;
    const float rest = 1.0f - t;
    return t + (1.0f - rest * rest * rest - t) * -bend;
}

static CPoint between(const CPoint& a, const CPoint& b, float t, float y)
{
    return {a.x + (b.x - a.x) * double(t), a.y + (b.y - a.y) * double(y)};
}

CPoint getCurveCoord(const CPoint& a, const CPoint& b, float bend, float t)
{
    return between(a, b, t, get_Exp_ASC(t, bend));
}

CPoint getCurveCoord_POW(const CPoint& a, const CPoint& b, float bend, float t)
{
    return between(a, b, t, get_Exp_ASC_pow(t, bend));
}

CPoint getCurveCoord_static_POW(const CPoint& a, const CPoint& b, float bend, float t)
{
    return between(a, b, t, get_Exp_ASC_Static_pow3(t, bend));
}

CurveFamily curveFamily(int type)
{
    if (type == 1)
        return {getCurveCoord_POW, get_Exp_ASC_pow};
    if (type == 2)
        return {getCurveCoord_static_POW, get_Exp_ASC_Static_pow3};
    return {getCurveCoord, get_Exp_ASC};
}
}
