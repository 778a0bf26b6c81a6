// SPDX-License-Identifier: GPL-3.0-or-later
// What presets, banks and hosts' states are made of: the ids and chunk names that files and projects hold,
// and which parameters are no part of a sound. Effect, library, command and packer know it from here.
//
// All of it is a promise: files keep these texts. How the bytes stand is in docs/preset-formats.md; the sizes
// of the file headers are in Orbel/storage/CFileFormat.h.
#pragma once

#include "effect/parameters/DKS_Mini.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace StateLayout
{
constexpr int pluginID = 0x51444B43; // "QDKC", as program and bank files hold it

// Ids of stores.
constexpr const char* presetID = "QDT_DKS_PRESET";
constexpr const char* bankID = "QDT_DKS_BANK";

// Chunks of a preset or a host's state, in the order in which they are written. The store itself adds the
// name.
constexpr const char* nameChunk = "SINGLEPRESET"; // for older readers; ours takes the name that the store has
constexpr const char* parameterChunk = "PPDATA";
constexpr const char* systemChunk = "SystemData"; // in a host's state and in a bank
constexpr const char* timeBaseChunk = "ENV_TIME_ADJUST";
constexpr const char* tempoChunk = "TEMPO"; // in presets that come from an older form; nobody reads it

// Chunks of a bank, besides the system settings.
constexpr const char* countChunk = "NumPresets";
constexpr const char* currentChunk = "CurrentPreset";
constexpr const char* presetChunk = "PRESET"; // followed by the preset's number, from 0

// Settings of the user's work rather than of a sound: a host's state brings them, a preset resets them.
constexpr std::array<int, 5> systemSet = {DKS_Mini::kTriggerSense, DKS_Mini::kEnvHold, DKS_Mini::kClickFilter,
                                          DKS_Mini::kBPMScale, DKS_Mini::kTriggerShift};

// What is not taken from the values of a preset: the host's tempo, and the system set.
constexpr auto noPartOfASound = []
{
    std::array<int, systemSet.size() + 1> all = {DKS_Mini::kTempo};
    std::copy(systemSet.begin(), systemSet.end(), all.begin() + 1);
    return all;
}();

// The current preset of a bank brings all but the tempo.
constexpr std::array<int, 1> ignoredInBanks = {DKS_Mini::kTempo};

// [any thread]  Whether data begins with that id as a whole text, its NUL included.
inline bool beginsWithID(std::string_view data, std::string_view id)
{
    return data.size() > id.size() && data.starts_with(id) && data[id.size()] == 0;
}
}
