// SPDX-License-Identifier: GPL-3.0-or-later
// The effect's library of presets: program files (.dks) in the format of kPresetFormatFXP, loaded and saved
// through the effect; banks, whose presets it writes out as such files; and the factory presets.
//
// Banks are untrusted input. What their presets are called decides the names of files, but never the folder;
// each name has the preset's number ahead of it ("01-"), which the browser does not show.
#pragma once

#include "presets/IPresetInterface.h"

#include <span>
#include <string_view>

class IPresetEffect;

// [window thread]
class Single_CPresetInterface : public Tovra::IPresetInterface
{
public:
    // The effect outlives the library. Nothing is scanned before setPresetFolder.
    explicit Single_CPresetInterface(IPresetEffect& owner);

    // The image of a bank file, for restoreBank; it has to stay as long as the library. Empty at first.
    void setFactoryBank(std::span<const char> fxbImage) { factoryBank = {fxbImage.data(), fxbImage.size()}; }

    void setCurrentPresetName(const char* name) override;
    // By the extension alone, in either case.
    bool isValidPreset(const char* path) const override;
    // Loads the preset as such: without the settings of a host's project. It becomes the current one if it
    // lies in the library; else none is current. A file that holds no preset does nothing.
    void loadPreset(const char* path) override;
    // Writes the file, over one that is there, and scans.
    PresetResult saveCurrentPreset(const char* path) override;
    // Keeps the number that the name has in the file.
    PresetResult renamePreset(int index, const char* newName) override;

    // Writes the presets of a bank's file into a subfolder named after it. Nothing is written if the file
    // holds no bank.
    PresetResult importBankFromFile(const char* path);
    // Writes the presets of a bank in any form, the older ones included, into folder, over files of the same
    // names. Nothing is written if it is not a bank or does not say how many presets it holds. Of those it
    // leaves out what is missing, refused or itself in an older form, and what goes beyond
    // OLDPRESET::kMostPresets or, unpacked, beyond 64 MiB. The result counts the files and names the first
    // preset that was left out.
    PresetResult exportBankToFolder(const char* folder, const char* data, long size);
    // Writes the factory presets into the library's folder, over files of the same names.
    PresetResult restoreBank();

private:
    PresetResult exportBank(const std::string& folder, std::string_view data);

    IPresetEffect& effect;
    std::string_view factoryBank;
};
