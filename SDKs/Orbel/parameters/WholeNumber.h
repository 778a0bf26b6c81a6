// SPDX-License-Identifier: GPL-3.0-or-later
// The whole number that a parameter's value stands for.
#pragma once

#include "CORE/Truncate.h"

namespace Orbel
{
// Truncated after a guard of 0.02 away from zero, so that a stored 2.9999 reads as 3.
inline int wholeNumber(float value)
{
    return Core::truncate<int>(value < 0.0f ? value - 0.02 : value + 0.02);
}
}
