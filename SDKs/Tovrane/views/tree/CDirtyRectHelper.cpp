// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/CDirtyRectHelper.h"

#include <algorithm>

namespace Tovra
{
void CDirtyRectHelper::push_back(const CRect& rect)
{
    if (size_t(count) < rects.size())
        rects[size_t(count++)] = rect;
}

void CDirtyRectHelper::copyFrom(const CDirtyRectHelper& other)
{
    if (other.rects.size() > rects.size())
        rects.resize(other.rects.size());
    std::copy_n(other.rects.begin(), other.count, rects.begin());
    count = other.count;
}

const CRect& CDirtyRectHelper::operator[](std::int32_t index) const
{
    static const CRect none;
    return index >= 0 && index < count ? rects[size_t(index)] : none;
}
}
