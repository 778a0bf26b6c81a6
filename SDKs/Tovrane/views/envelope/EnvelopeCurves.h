// SPDX-License-Identifier: GPL-3.0-or-later
// The bent lines between the points of an envelope: three families, each with a bend of 0 for a straight
// line. x is linear in t, y bends. [any thread]
#pragma once

#include "Tovrane/base/CPoint.h"

namespace Tovra
{
// y of t, both from 0 to 1.
using ShapingFunction = float (*)(float t, float bend);
// The place at t of the line from a to b.
using CurveFunction = CPoint (*)(const CPoint& a, const CPoint& b, float bend, float t);

// A quotient: below 0 it rises early, above 0 late.
float get_Exp_ASC(float t, float bend);
// A power. Subnormal results are 0.
float get_Exp_ASC_pow(float t, float bend);
// A cubic.
float get_Exp_ASC_Static_pow3(float t, float bend);

CPoint getCurveCoord(const CPoint& a, const CPoint& b, float bend, float t);
CPoint getCurveCoord_POW(const CPoint& a, const CPoint& b, float bend, float t);
CPoint getCurveCoord_static_POW(const CPoint& a, const CPoint& b, float bend, float t);

struct CurveFamily
{
    CurveFunction coordinate = getCurveCoord;
    ShapingFunction shape = get_Exp_ASC;
};

// 0 the quotients, 1 the powers, 2 the cubics; any other number is 0.
CurveFamily curveFamily(int type);
}
