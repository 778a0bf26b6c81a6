#include "tools/TimeBase.h"

#include "parameters/TimeAdjust.h"
#include "tools/Text.h"
#include "tools/ToolError.h"

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
}
