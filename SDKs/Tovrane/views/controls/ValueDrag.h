// SPDX-License-Identifier: GPL-3.0-or-later
// How a drag up and down changes a value: the arithmetic that all dials and value boxes share.
//
// The right button or shift makes a drag fine. Pressing or releasing shift on the way changes the slope and
// not the value. A dead zone holds the value at its centre over a part of the way, as a detent does; outside
// of it the value goes on from there. [window thread]
#pragma once

#include "Tovrane/base/CPoint.h"

namespace Tovra
{
struct DeadZone
{
    bool isOn = false;
    float centre = 0.5f;
    float width = 0.03f; // to either side, in values

    // The value that a drag would have without the zone, so that it begins where the user sees it.
    float widened(float value) const;
    float narrowed(float dragged) const;
};

class ValueDrag
{
public:
    static constexpr float usualRange = 200.0f;
    static constexpr float usualZoom = 10.0f;

    // Of the whole way from minimum to maximum, in units of length; anything but a positive number stands for
    // the usual range.
    void setRange(float length);
    // How much longer the way is in a fine drag.
    void setZoomFactor(float factor) { zoom = factor; }
    float getZoomFactor() const { return zoom; }
    DeadZone& deadZone() { return zone; }

    void begin(const CPoint& where, long buttons, float value, float minimum, float maximum);
    // The value at a place, within the range; across adds the way to the right to the way up.
    float valueAt(const CPoint& where, long buttons, bool across = false);
    // Whether the place is the one of the last call, and so changes nothing.
    bool isAtLast(const CPoint& where) const { return where == last; }

private:
    float slope(long forButtons) const;

    float range = usualRange;
    float zoom = usualZoom;
    DeadZone zone;
    CPoint anchor;
    CPoint last{-1.0, -1.0};
    float start = 0.0f;
    float low = 0.0f;
    float high = 1.0f;
    long buttons = 0;
};
}
