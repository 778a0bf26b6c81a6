// SPDX-License-Identifier: GPL-3.0-or-later
// A small file as a whole: events, presets.
#pragma once

#include "tools/common/ToolError.h"

#include <string>

namespace lodex
{
constexpr size_t largestInputFile = size_t(64) << 20; // bytes

// The file's content; it need not be a regular file. If it can't be read, the ToolError is the bare reason.
std::string readInputFile(const std::string& path);

// The reason with the file's name.
ToolError cannotRead(const std::string& path, const ToolError& reason);
}
