// SPDX-License-Identifier: GPL-3.0-or-later
// What a file of presets holds, whatever its form: known by its content, not by its name.
//
//   a program or bank file (.fxp, .dks, .fxb), a VST 3 host's state, or the bare chunk, and in each of them
//   a preset, a bank of presets, or one of the older product's forms, raw or tagged
//
// What comes out is a list of presets that the effect can load. The readers are those of the effect itself;
// their diagnoses are passed on as words for a person. A small file can unpack to a very large one, so
// that all that a file unpacks to comes out of one allowance.
#pragma once

#include "tools/preset/PresetPayload.h"

#include <string>
#include <vector>

namespace lodex
{
struct StoredPreset
{
    std::string chunk;   // a store for the effect; empty if nothing in it can be used
    std::string problem; // empty if there is none
};

struct PresetFile
{
    PresetType type = PresetType::state; // how such a file is usually taken
    bool isOlder = false;
    bool isBank = false;
    int current = 0;                   // of a bank; need not be an index of presets
    std::vector<StoredPreset> presets; // by their numbers in the bank; at least one can be used
    std::string systemSettings;        // of a bank
    std::string problem;               // the first of all; empty if there is none

    // A bank that a host recalls as such, with system settings of its own.
    bool isRecalledAsBank(PresetType taken) const { return isBank && !isOlder && taken == PresetType::state; }
    // What the effect is given, in this order, for it to hold one of the presets, which can be used. For a
    // bank that is recalled as such the last one is a bank.
    std::vector<std::string> chunks(size_t index, PresetType taken) const;
};

constexpr int mostPresets = 1024; // read of a bank

// A ToolError is the bare reason why nothing in bytes can be used.
PresetFile parsePresetFile(std::string bytes);
// Of at most 64 MiB. A ToolError names the file.
PresetFile readPresetFile(const std::string& path);
}
