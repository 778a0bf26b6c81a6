// SPDX-License-Identifier: GPL-3.0-or-later
// Factory presets in the form in which the plug-in carries them: the image of a bank file with all of them,
// and that of a program file with the start state.
//
// Runs at build time, in pack_presets, and in tests. The same texts give the same bytes.
#pragma once

#include "tools/pack_presets/PresetText.h"

#include <string>
#include <vector>

namespace lodex
{
// The store of one preset, as the effect writes it into a preset's file. The host's tempo and the settings of
// the user's work are in it with their defaults.
std::string packPreset(const PresetText& preset);

std::string packBank(const std::vector<PresetText>& presets);
std::string packProgram(const PresetText& preset);
}
