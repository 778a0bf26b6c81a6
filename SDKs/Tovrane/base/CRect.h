// A rectangle, kept by its corners in pixels: width and height are computed.
//
// pointInside is half-open, so that neighbours share no point. What a view answers to a mouse is another
// question (CView::hitTest), which includes all four edges.
#pragma once

#include "Tovrane/base/CPoint.h"

namespace Tovra
{
// [any thread]  A plain value. One with a coordinate that is no number is empty and holds no point.
struct CRect
{
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

    CRect() = default;
    CRect(double fromLeft, double fromTop, double toRight, double toBottom)
        : left(fromLeft), top(fromTop), right(toRight), bottom(toBottom)
    {
    }

    double getWidth() const { return right - left; }
    double getHeight() const { return bottom - top; }
    CPoint getTopLeft() const { return {left, top}; }
    CPoint getTopRight() const { return {right, top}; }
    CPoint getSize() const { return {getWidth(), getHeight()}; }
    CPoint center() const { return {left + getWidth() * 0.5, top + getHeight() * 0.5}; }

    // Right and bottom stay where they are: the size changes.
    CRect& setTopLeft(const CPoint& point);
    // Left and top stay where they are.
    CRect& setSize(const CPoint& size);
    CRect& offset(double dx, double dy);
    CRect& offset(const CPoint& by) { return offset(by.x, by.y); }
    // The top left comes to lie on the point; the size is kept.
    CRect& moveTo(const CPoint& point);

    bool pointInside(const CPoint& point) const;
    bool isEmpty() const;

    // Cuts off what lies outside other. Without a common part the width or the height is exactly 0, never
    // negative.
    CRect& bound(const CRect& other);
    // Moves into other, size kept, by the shift that is returned. Where both sides stick out, left and top
    // decide.
    CPoint bounce(const CRect& other);

    bool operator==(const CRect&) const = default;
};
}
