// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetFolder.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Orbel::Helpers;

TEST(PresetFolder, IsTheUsersChoiceOrLiesWithTheUsersData)
{
    const TempFolder folder;
    const TempEnvironment config("LODEX_CONFIG_HOME", folder.path.c_str());
    const TempEnvironment data("LODEX_DATA_HOME", "/data");
    EXPECT_EQ(getDefaultPresetFolder("QDT Brellic"), "/data/Torvane/QDT Brellic/");
    EXPECT_EQ(getPluginPresetFolder("Plug", "/given/"), "/given/");
    EXPECT_EQ(getPluginPresetFolder("Plug", nullptr), "/data/Torvane/Plug/");
    EXPECT_TRUE(setPluginPresetFolder("Plug", "/my %s/"));
    EXPECT_EQ(getPluginPresetFolder("Plug", "/given/"), "/my %s/");
    EXPECT_EQ(asFolder("a\\b"), "a/b/");
}
