// SPDX-License-Identifier: GPL-3.0-or-later
// What a file of presets holds once its own header is off: a preset, a bank, or an older form.
#pragma once

#include <string>

namespace lodex
{
// How a preset is to be taken: a host's state brings the system settings (trigger sense, envelope hold, click
// filter, scaling, trigger shift), a preset leaves them at their defaults.
enum class PresetType
{
    state = 0,
    preset = 1
};

struct PresetPayload
{
    std::string bytes;
    PresetType type = PresetType::state; // how such a file is usually taken
    std::string problem;                 // empty if nothing is missing of it
};

// The payload of a program or bank file or of a VST 3 host's state, or the bytes as they are. A file's own
// header comes first, then the exact sizes of the raw older forms. A ToolError is the bare reason why none of
// it can be used.
PresetPayload unwrapPreset(std::string bytes);
}
