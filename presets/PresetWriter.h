// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the presets of a bank into a folder, as files that take their places together. Banks are untrusted
// input: what a preset is called decides the name of its file, but never the folder.
#pragma once

#include "CORE/FileReplacementGroup.h"
#include "Orbel/storage/Packing.h"
#include "presets/PresetResult.h"

#include <optional>
#include <string>
#include <string_view>

// [window thread] [worker]  One thread at a time.
class PresetWriter
{
public:
    // The folder ends with "/". It is made if it is missing.
    PresetWriter(const std::string& folder, const char* extension);

    // Writes a preset as it stands; index is its place in the bank, from 0, which the file's name shows.
    // Leaves out, and notes, what is not a preset or is in an older form, and what goes beyond 64 MiB that
    // all of them together may unpack to.
    void write(int index, std::string_view stored);
    // Keeps the problem if it is the first.
    void note(const std::string& problem);
    // Puts the files in their places. The result counts them and has the first problem.
    PresetResult finish();

private:
    // The name of the preset, or the problem for which it is left out.
    std::string nameOf(std::string_view stored, std::string& problem);

    std::string folder, extension;
    Orbel::UnpackingAllowance allowance;
    PresetResult result;
    std::optional<Core::FileReplacementGroup> files;
};
