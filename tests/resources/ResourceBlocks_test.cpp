// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/ResourceStore.h"
#include "resources/EffectResources.h"
#include "resources/FontResources.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace
{
std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string fetched(const Orbel::ResourceBlock& block, const char* name)
{
    return Orbel::readResource(block.data, block.size, name).value_or("none");
}
}

TEST(ResourceBlocks, HoldTheFilesThatTheyWereMadeOf)
{
    const std::string fonts = "/usr/share/fonts/truetype/liberation/LiberationSans-";
    EXPECT_TRUE(fetched(fontResources(), "arial.ttf") == contentOf(fonts + "Regular.ttf"));
    EXPECT_TRUE(fetched(fontResources(), "arialbd.ttf") == contentOf(fonts + "Bold.ttf"));
    // What these two hold, the tests of the factory bank see.
    EXPECT_TRUE(fetched(effectResources(), "initPreset").starts_with("CcnK"));
    EXPECT_TRUE(fetched(effectResources(), "defaultBank").starts_with("CcnK"));
}
