// SPDX-License-Identifier: GPL-3.0-or-later
// Drives a page's live views by a script (tools/shot/ShotScript.h), without a screen and in virtual time.
#pragma once

#include <cstddef>
#include <string>

namespace Gallery
{
// [window thread]  With scale pixels to a unit. Returns what the script brought to light, as JSON. Throws a
// lodex::ToolError that names the script's line, also for the steps of a host, which no page has.
std::string playScript(std::size_t page, double scale, const std::string& path);
}
