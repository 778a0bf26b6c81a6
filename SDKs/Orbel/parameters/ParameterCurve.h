// SPDX-License-Identifier: GPL-3.0-or-later
// The bend between the position of a knob and the place of its value in the range, both from 0 to 1.
#pragma once

namespace Orbel
{
// The place in the range of a position. All in single precision.
inline float bendPosition(float position, float curve)
{
    if (curve < 0.0f)
        return (1.0f - curve) * position / (1.0f - curve * position);
    const float rest = 1.0f - position;
    return 1.0f - (1.0f + curve) * rest / (curve * rest + 1.0f);
}

// The inverse: the same bend with the opposite curve.
inline float unbendUnit(float unit, float curve)
{
    return bendPosition(unit, -curve);
}
}
