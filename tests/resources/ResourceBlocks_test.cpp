#include "Orbel/CFileFormat.h"
#include "Orbel/CPresetStore.h"
#include "TempFolder.h"
#include "pack_resources/ResourcePacker.h"
#include "resources/EffectResources.h"
#include "resources/FontResources.h"

#include <functional>
#include <gtest/gtest.h>
#include <vector>

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
    EXPECT_EQ(fetched(fontResources(), "initPreset"), "none");

    Orbel::CPresetFormatFXP program;
    Orbel::CPresetFormatFXB bank;
    const auto storeOf = [](Orbel::CPresetFormat& format, const char* name, const char* id)
    {
        format.setPluginID(0x51444B43);
        const std::string image = fetched(effectResources(), name);
        const char* payload = nullptr;
        long size = 0;
        Orbel::CPresetStore store;
        store.setPresetID(id);
        EXPECT_TRUE(format.unwrap(image.data(), long(image.size()), &payload, &size)) << name;
        std::string copy(payload, size_t(size));
        EXPECT_EQ(store.setPreset(copy.data(), size), 0) << name;
        return store;
    };
    char* chunk = nullptr;
    EXPECT_GT(storeOf(program, "initPreset", "QDT_DKS_PRESET").getChunk("PPDATA", &chunk), 0);
    EXPECT_EQ(storeOf(bank, "defaultBank", "QDT_DKS_BANK").getString("NumPresets"), "32");
}

TEST(ResourcePacker, PacksAsTheArgumentsSay)
{
    const TempFolder folder;
    const std::string content(1000, 'x');
    const std::string path = folder.put("a=b:c", content);
    for (const char* kind : {"", ":zlib", ":scrambled"})
    {
        const std::vector resources = {lodex::readResource("a name=" + path + kind),
                                       lodex::Resource{.name = "empty", .content = "", .compressed = true}};
        const std::string block = lodex::makeBlock(resources);
        EXPECT_EQ(fetched({block.data(), block.size()}, "a name"), content);
        EXPECT_EQ(fetched({block.data(), block.size()}, "empty"), "");
        EXPECT_EQ(block.size() < content.size(), kind == std::string(":zlib"));
        EXPECT_EQ(block, lodex::makeBlock(resources));
    }
}

TEST(ResourcePacker, StopsAtWhatCannotBeReadBack)
{
    const lodex::Resource one{.name = "one", .content = "1", .compressed = false};
    lodex::Resource large = one, nameless = one, longName = one;
    large.content.resize((64 << 20) + 1);
    nameless.name = "";
    longName.name = std::string(256, 'n');
    for (const lodex::Resource& bad : {large, nameless, longName})
        EXPECT_THROW(lodex::makeBlock(std::vector{bad}), std::runtime_error) << bad.name.size();
    EXPECT_THROW(lodex::makeBlock(std::vector{one, one}), std::runtime_error);
    EXPECT_THROW(lodex::readResource("no equals sign"), std::runtime_error);
    EXPECT_THROW(lodex::readResource("name=/none"), std::runtime_error);
    EXPECT_THROW(lodex::readResource("name=/"), std::runtime_error);
}
