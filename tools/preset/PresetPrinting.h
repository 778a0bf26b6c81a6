// SPDX-License-Identifier: GPL-3.0-or-later
// What a file of presets holds, on standard output: for programs and for people.
#pragma once

#include "tools/preset/PresetFile.h"

namespace lodex
{
struct PresetContent;

// What a new effect makes of one preset of the file, which can be used.
PresetContent contentOf(const PresetFile& file, size_t index, PresetType taken);

// One JSON object; its form stands in the help of "lodex preset show".
void printJson(const PresetFile& file, PresetType taken);
void printTables(const PresetFile& file, PresetType taken);
}
