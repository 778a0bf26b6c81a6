// SPDX-License-Identifier: GPL-3.0-or-later
// A position, or a distance, in the toolkit's coordinates: x to the right, y downwards, in pixels.
#pragma once

namespace Tovra
{
// [any thread]  A plain value.
struct CPoint
{
    double x = 0.0;
    double y = 0.0;

    CPoint() = default;
    CPoint(double ofX, double ofY) : x(ofX), y(ofY) {}

    CPoint& offset(double dx, double dy)
    {
        x += dx;
        y += dy;
        return *this;
    }

    bool operator==(const CPoint&) const = default;
    CPoint operator+(const CPoint& other) const { return {x + other.x, y + other.y}; }
    CPoint operator-(const CPoint& other) const { return {x - other.x, y - other.y}; }
};
}
