// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/instance/CQDT_DKS_Single.h"
#include "presets/Single_CPresetInterface.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

// What the user would save over must be what the effect holds.
TEST(Library, HasNoCurrentPresetAfterInitOrAHostsState)
{
    const TempFolder config, folder;
    const TempEnvironment home("LODEX_CONFIG_HOME", config.path.c_str());
    CQDT_DKS_Single effect(nullptr);
    effect.setPresetFolder(folder.path.c_str());
    Single_CPresetInterface& library = effect.getPresetInterface();
    EXPECT_GE(library.restoreBank().written, 32);
    library.rescanPresets();

    char* chunk = nullptr;
    const long size = effect.getDataChunk(&chunk);
    std::string state(chunk, size_t(size));
    library.loadPresetFromIndex(3);
    EXPECT_EQ(library.getCurrentIndex(), 3);
    effect.setDataChunk(state.data(), size);
    EXPECT_EQ(library.getCurrentIndex(), -1);
    library.loadPreset((folder / "01-Four on the Floor.dks").c_str());
    EXPECT_EQ(library.getCurrentIndex(), 0);
    effect.initPreset();
    EXPECT_EQ(library.getCurrentIndex(), -1);
}
