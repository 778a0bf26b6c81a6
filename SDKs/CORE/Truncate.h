// SPDX-License-Identifier: GPL-3.0-or-later
// A floating-point number cut to an integer, defined for every number.
#pragma once

#include <limits>

namespace Core
{
// The whole part of value, towards zero; a value beyond the integer's range is clamped to it, and a
// NaN gives 0. A plain cast of such values is undefined. [any thread]
template <typename Integer>
Integer truncate(double value)
{
    constexpr double low = double(std::numeric_limits<Integer>::min());
    constexpr double high = double(std::numeric_limits<Integer>::max());
    if (value >= high)
        return std::numeric_limits<Integer>::max();
    if (value <= low)
        return std::numeric_limits<Integer>::min();
    return value == value ? Integer(value) : Integer(0);
}
}
