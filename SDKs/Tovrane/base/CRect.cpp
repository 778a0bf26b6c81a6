// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/CRect.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
CRect& CRect::setTopLeft(const CPoint& point)
{
    left = point.x;
    top = point.y;
    return *this;
}

CRect& CRect::setSize(const CPoint& size)
{
    right = left + size.x;
    bottom = top + size.y;
    return *this;
}

CRect& CRect::offset(double dx, double dy)
{
    left += dx;
    right += dx;
    top += dy;
    bottom += dy;
    return *this;
}

CRect& CRect::moveTo(const CPoint& point)
{
    return offset(point.x - left, point.y - top);
}

bool CRect::pointInside(const CPoint& point) const
{
    return left <= point.x && point.x < right && top <= point.y && point.y < bottom;
}

bool CRect::isEmpty() const
{
    return !(left < right && top < bottom); // also for a NaN
}

CRect& CRect::bound(const CRect& other)
{
    left = std::max(left, other.left);
    top = std::max(top, other.top);
    right = std::max(left, std::min(right, other.right));
    bottom = std::max(top, std::min(bottom, other.bottom));
    return *this;
}

CRect& CRect::roundOut()
{
    left = std::floor(left);
    top = std::floor(top);
    right = std::ceil(right);
    bottom = std::ceil(bottom);
    return *this;
}

CPoint CRect::bounce(const CRect& other)
{
    CPoint shift;
    if (other.left > left)
        shift.x = other.left - left;
    else if (right > other.right)
        shift.x = other.right - right;

    if (other.top > top)
        shift.y = other.top - top;
    else if (bottom > other.bottom)
        shift.y = other.bottom - bottom;

    offset(shift);
    return shift;
}
}
