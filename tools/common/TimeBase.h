// SPDX-License-Identifier: GPL-3.0-or-later
// The time bases by the names that the product gives them.
#pragma once

#include <string>
#include <string_view>

namespace lodex
{
// The trigger interval in beats; a ToolError that lists the names for any other name.
float timeBaseByName(std::string_view name);

// The name of one of them; others by their length, as "0.7 beats".
std::string nameOfTimeBase(float beats);
}
