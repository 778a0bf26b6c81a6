// SPDX-License-Identifier: GPL-3.0-or-later
// A library of presets in a folder of the test's own, with an effect whose state is one text.
#pragma once

#include "Orbel/storage/CFileFormat.h"
#include "presets/IPresetEffect.h"
#include "presets/Single_CPresetInterface.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <vector>

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

struct Effect final : IPresetEffect
{
    void setPresetType(int newType) override { type = newType; }
    long getDataChunk(char** out) override
    {
        EXPECT_EQ(type, 1);
        *out = state.data();
        return long(state.size());
    }
    void setDataChunk(char* data, long size) override
    {
        EXPECT_EQ(type, 1);
        state.assign(data, size_t(size));
    }
    void setPresetName(const char* newName) override { name = newName; }

    int type = 0;
    std::string state, name;
};

class PresetLibrary : public testing::Test
{
protected:
    PresetLibrary()
    {
        Orbel::kPresetFormatFXP->setPluginID(0x51444B43);
        Orbel::kPresetFormatFXB->setPluginID(0x51444B43);
    }

    // Files of the library's folder, each a preset that holds its own path; then a scan.
    void putPresets(const Names& paths)
    {
        for (const std::string& path : paths)
        {
            fs::create_directories(fs::path(root / path).parent_path());
            Orbel::kPresetFormatFXP->saveToFile((root / path).c_str(), path.data(), long(path.size()));
        }
        library.setPresetFolder(root.path.c_str());
    }

    Names listed() const
    {
        Names names;
        for (int i = 0; i < library.getNumPresets(); ++i)
            names.push_back(std::string(library.getSubGroupName(i)) + ":" + library.getPresetName(i));
        return names;
    }

    // All files below a folder, sorted, with the folder's path cut off.
    static Names filesBelow(const fs::path& folder)
    {
        std::set<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            if (!entry.is_directory())
                names.insert(entry.path().lexically_relative(folder).string());
        return {names.begin(), names.end()};
    }

    const TempFolder folder;
    TempFolder root;
    Effect effect;
    Single_CPresetInterface library{effect};
};
