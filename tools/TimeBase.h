// The time bases by the names that the product gives them.
#pragma once

#include <string_view>

namespace lodex
{
// The trigger interval in beats; a ToolError that lists the names if name is none of them.
float timeBaseByName(std::string_view name);
}
