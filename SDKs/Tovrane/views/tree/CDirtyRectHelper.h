// A list of rectangles that grows by copying alone: push_back never allocates. [window thread]
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
    // A rectangle beyond the capacity is dropped.
    void push_back(const CRect& rect);
    void copyFrom(const CDirtyRectHelper& other);
    // A rectangle of zeros out of range.
    const CRect& operator[](std::int32_t index) const;

private:
    std::vector<CRect> rects; // as many as there is room for
    std::int32_t count = 0;
};
}
