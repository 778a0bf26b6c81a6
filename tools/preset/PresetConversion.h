// SPDX-License-Identifier: GPL-3.0-or-later
// "lodex preset convert": whatever form presets are in, as current preset files.
#pragma once

#include <string>

namespace lodex
{
struct PresetFile;

// Writes one preset to the file output, and several to preset files in the folder output, which is made if
// it is missing. All are complete on the disk before the first takes its place, and files that are there are
// replaced only with force. The count of presets written. A ToolError otherwise, and nothing was written.
int convertPresets(const PresetFile& file, const std::string& output, bool force);
}
