// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CFontDesc.h"
#include "resources/FontResources.h"

#include <cstring>
#include <gtest/gtest.h>

using Tovra::CFontDesc;

static std::string data(CFontDesc& font)
{
    const char* bytes = nullptr;
    long length = 0;
    return font.getFont(bytes, length) ? std::string(bytes, size_t(length)) : std::string();
}

static std::string resource(const char* name)
{
    return Orbel::readResource(fontResources().data, fontResources().size, name).value();
}

TEST(CFontDesc, IsBoldInStyleOneAlone)
{
    const std::string regular = resource("arial.ttf"), bold = resource("arialbd.ttf");
    ASSERT_NE(regular, bold);
    CFontDesc font("arial.ttf", "arialbd.ttf", 12.0, Tovra::kFontCacheGrey);
    const struct
    {
        long style;
        const std::string& face;
        const char* name;
    } cases[] = {{0, regular, "arialbd.ttf"},
                 {1, bold, "arial.ttf"},
                 {2, regular, "arial.ttf"},
                 {0, regular, "arialbd.ttf"}};
    for (const auto& c : cases)
    {
        font.setStyle(c.style);
        EXPECT_TRUE(data(font) == c.face) << c.style;
        EXPECT_STREQ(font.getName(), c.name) << c.style << ": the other way round";
    }
}

TEST(CFontDesc, TakesTheRegularFaceForAMissingBoldOneAndNoneForAMissingRegularOne)
{
    for (const char* bold : {(const char*)nullptr, "arial.ttf"})
    {
        CFontDesc font("arial.ttf", bold, 12.0, Tovra::kFontCacheLCD);
        font.setStyle(1);
        EXPECT_TRUE(data(font) == resource("arial.ttf"));
    }
    CFontDesc font("papyrus.ttf", "arialbd.ttf", 12.0, Tovra::kFontCacheLCD);
    const char* bytes = "";
    long length = 1;
    EXPECT_FALSE(font.getFont(bytes, length));
    EXPECT_EQ(bytes, nullptr);
    EXPECT_EQ(length, 0);
    font.setStyle(1);
    EXPECT_TRUE(font.getFont(bytes, length));
}

// The editor binds a block of resources to its thread while it loads its pictures.
TEST(CFontDesc, LeavesTheBoundResourcesAlone)
{
    SetResourcePtr(fontResources().data, long(fontResources().size));
    unsigned long size = 0;
    const char* const held = GetResource("arialbd.ttf", size);
    ASSERT_NE(held, nullptr);
    CFontDesc font("arial.ttf", nullptr, 9.0, Tovra::kFontCacheGrey);
    EXPECT_FALSE(data(font).empty());
    EXPECT_NE(GetResource("arialbd.ttf", size), nullptr);
    FreeResources();
}
