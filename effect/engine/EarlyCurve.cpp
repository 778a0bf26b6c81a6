// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/EarlyCurve.h"

void EarlyCurve::setCurve(float newCurve)
{
    if (newCurve == curve)
        return;
    curve = newCurve;
    const double exponent = 1.0 - double(curve);
    for (int k = 1; k <= order; ++k)
        factor[k] = factor[k - 1] * (exponent - (k - 1)) / k;
    centre = NAN; // no stretch yet
}

// Ahead of base, which falls as a segment runs, so that the stretch lies on both sides of the centre.
void EarlyCurve::moveCentre(double base)
{
    centre = base * (1.0 - 0.9 * reach);
    inverseCentre = 1.0 / centre;
    powerAtCentre = std::pow(centre, 1.0 - double(curve));
}
