// SPDX-License-Identifier: GPL-3.0-or-later
// One key, as hosts, the framework and the toolkit hand it on.
#pragma once

#include <cstdint>

namespace Core
{
struct KeyCode
{
    std::int64_t character = 0;  // Unicode; 0 for a key that does not print
    std::uint8_t virtualKey = 0; // such a key, in the numbers that VST hosts use
    std::uint8_t modifiers = 0;  // 1 shift, 2 alt, 4 command, 8 control
};
}
