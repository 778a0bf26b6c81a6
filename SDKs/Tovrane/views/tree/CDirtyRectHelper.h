// SPDX-License-Identifier: GPL-3.0-or-later
// A list of rectangles. push_back never allocates; only copyFrom may. [window thread]
#pragma once

#include "Tovrane/base/CRect.h"

#include <cstdint>
#include <vector>

namespace Tovra
{
class CDirtyRectHelper
{
public:
    static constexpr std::int32_t initialCapacity = 64;

    CDirtyRectHelper() : rects(initialCapacity) {}

    void clear() { count = 0; }
    std::int32_t size() const { return count; }
    // Does nothing when the list is full.
    void push_back(const CRect& rect);
    void copyFrom(const CDirtyRectHelper& other);
    // Out of range an empty rectangle at (0, 0).
    const CRect& operator[](std::int32_t index) const;

private:
    std::vector<CRect> rects; // its size is the capacity
    std::int32_t count = 0;
};
}
