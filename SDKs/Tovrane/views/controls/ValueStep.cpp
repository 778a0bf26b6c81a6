// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/ValueStep.h"

#include "Tovrane/views/tree/CControl.h"
#include "Tovrane/views/tree/CFrame.h"

namespace Tovra
{
std::optional<ValueStep> stepOfWheel(CControl& control, const CPoint& where, float notches, long buttons)
{
    if (!control.getMouseEnabled() || !control.hitTest(where, buttons) || !control.isEnabled())
        return {};
    return ValueStep{notches, (buttons & kModShift) != 0};
}

std::optional<ValueStep> stepOfKey(const CControl& control, const TovraKeyCode& code)
{
    const bool isArrow = code.virtualKey >= kVirtualLeft && code.virtualKey <= kVirtualDown;
    const CFrame* const frame = control.getFrame();
    if (!isArrow || frame == nullptr || frame->getFocusView() != &control || !control.isEnabled())
        return {};
    const bool isUp = code.virtualKey == kVirtualUp || code.virtualKey == kVirtualRight;
    return ValueStep{isUp ? 1.0f : -1.0f, (code.modifiers & kKeyShift) != 0};
}
}
