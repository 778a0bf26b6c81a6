// SPDX-License-Identifier: GPL-3.0-or-later
// A rectangle, stored by its edges in pixels: width and height are computed.
//
// pointInside leaves out the right and bottom edges, so that neighbours share no point. Views include all
// four edges when they are asked about the mouse (CView::hitTest).
#pragma once

#include "Tovrane/base/CPoint.h"

namespace Tovra
{
// [any thread]  A plain value. A rectangle with a NaN coordinate is empty and contains no point.
struct CRect
{
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

    constexpr CRect() = default;
    constexpr CRect(double fromLeft, double fromTop, double toRight, double toBottom)
        : left(fromLeft), top(fromTop), right(toRight), bottom(toBottom)
    {
    }

    double getWidth() const { return right - left; }
    double getHeight() const { return bottom - top; }
    CPoint getTopLeft() const { return {left, top}; }
    CPoint getTopRight() const { return {right, top}; }
    CPoint getSize() const { return {getWidth(), getHeight()}; }
    CPoint center() const { return {left + getWidth() * 0.5, top + getHeight() * 0.5}; }

    // Moves the left and top edges alone: the size changes.
    CRect& setTopLeft(const CPoint& point);
    // Moves the right and bottom edges.
    CRect& setSize(const CPoint& size);
    CRect& offset(double dx, double dy);
    CRect& offset(const CPoint& by) { return offset(by.x, by.y); }
    // Moves the top left corner to the point; the size is kept.
    CRect& moveTo(const CPoint& point);

    bool pointInside(const CPoint& point) const;
    bool isEmpty() const;

    // The intersection with other. If they do not meet, the width or the height is exactly 0, never negative.
    CRect& bound(const CRect& other);
    // Grows to whole pixels on all sides.
    CRect& roundOut();
    // Moves the rectangle into other, without changing its size, and returns the shift. If it is larger than
    // other, the left and top edges are aligned.
    CPoint bounce(const CRect& other);

    bool operator==(const CRect&) const = default;
};
}
