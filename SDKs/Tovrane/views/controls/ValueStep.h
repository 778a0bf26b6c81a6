// SPDX-License-Identifier: GPL-3.0-or-later
// What the wheel and the arrow keys ask of a control with a value: so many notches up or down, and a tenth of
// that with shift. Up and right are more. [window thread]
#pragma once

#include "Tovrane/base/CPoint.h"
#include "Tovrane/window/TovraKeyCode.h"

#include <optional>

namespace Tovra
{
class CControl;

struct ValueStep
{
    float notches = 0.0f;
    bool isFine = false;

    // The change of a value that one notch changes by increment.
    float of(float increment) const { return notches * (increment * (isFine ? 0.1f : 1.0f)); }
};

// Nothing if the control is disabled, takes no mouse, or is not under it.
std::optional<ValueStep> stepOfWheel(CControl& control, const CPoint& where, float notches, long buttons);
// Nothing for other keys than arrows, or if the control is disabled or has not the focus.
std::optional<ValueStep> stepOfKey(const CControl& control, const TovraKeyCode& code);
}
