// What a file of presets holds, whatever its form: known by its content, not by its name.
//
//   a program or bank file (.fxp, .dks, .fxb), a VST 3 host's state, or the bare chunk, and in each of them
//   a preset, a bank of presets, or one of the older product's forms, raw or tagged
//
// What comes out is a list of presets that the effect can load. The raw older forms are told by their exact
// size alone, so those sizes win over any content.
#pragma once

#include "tools/preset/PresetExamination.h"

#include <string>
#include <vector>

namespace lodex
{
// How a preset is to be taken: a host's state brings the system settings (trigger sense, envelope hold, click
// filter, scaling, trigger shift), a preset leaves them at their defaults.
enum class PresetType
{
    state = 0,
    preset = 1
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

    // What the effect is given, in this order, for it to hold one of the presets, which can be used. A host
    // recalls a bank with the bank's system settings, which is a chunk of its own.
    std::vector<std::string> chunks(size_t index, PresetType taken) const;
};

constexpr int mostPresets = 1024; // read of a bank

// A ToolError is the bare reason why nothing in bytes can be used.
PresetFile parsePresetFile(std::string bytes);
// Of at most 64 MiB. A ToolError names the file.
PresetFile readPresetFile(const std::string& path);
}
