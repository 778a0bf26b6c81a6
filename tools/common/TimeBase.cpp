// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/common/TimeBase.h"

#include "effect/parameters/TimeAdjust.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

#include <cmath>

namespace lodex
{
float timeBaseByName(std::string_view name)
{
    std::string names;
    for (int i = 0; i < gNumTimeAdjustEntries; ++i)
    {
        if (name == gTimeAdjustText[i])
            return gTimeAdjustMultiplier[i];
        names += std::string(i ? ", " : "") + gTimeAdjustText[i];
    }
    throw ToolError("no time base " + inQuotes(name) + "; there are " + names);
}

// Files may hold a third with few decimals.
std::string nameOfTimeBase(float beats)
{
    for (int i = 0; i < gNumTimeAdjustEntries; ++i)
        if (std::fabs(beats - gTimeAdjustMultiplier[i]) < 1e-6f)
            return gTimeAdjustText[i];
    return formatNumber(beats) + " beats";
}
}
