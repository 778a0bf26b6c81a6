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

    // A preset as it stands, with its place in the bank, from 0, in the file's name. Left out, and noted, if
    // it is no preset, if it is in an older form, or if all of them together would unpack to more than 64
    // MiB.
    void write(int index, std::string_view stored);
    void note(const std::string& problem);
    // Puts the files in their places: how many, and the first thing that went wrong.
    PresetResult finish();

private:
    // What the preset is called, or why it is left out.
    std::string nameOf(std::string_view stored, std::string& problem);

    std::string folder, extension;
    Orbel::UnpackingAllowance allowance;
    PresetResult result;
    std::optional<Core::FileReplacementGroup> files;
};
