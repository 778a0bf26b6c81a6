// SPDX-License-Identifier: GPL-3.0-or-later
// The words of a line of a script.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lodex
{
struct ShotWord
{
    std::string text;
    bool isQuoted = false;
};

// The words up to the comment. Throws a ToolError for a quote that is never closed.
std::vector<ShotWord> splitShotWords(std::string_view text);
}
