// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/FileNames.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

TEST(FileNames, TakesPathsApart)
{
    struct
    {
        const char *path, *folder, *name, *extension;
    } const cases[] = {
        {"/a/b/Kick 1.dks", "/a/b/", "Kick 1", ".dks"},
        {"C:\\a\\b.c\\Kick", "C:\\a\\b.c\\", "Kick", ""},
        {"/mixed\\x.y.fxp", "/mixed\\", "x.y", ".fxp"},
        {"/a/.hidden", "/a/", "", ".hidden"},
        {"/a/b:c.x", "/a/", "b", ".x"},
        {"12:3.x", "", "12", ".x"},
        {nullptr, "", "", ""},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.path ? c.path : "null");
        EXPECT_STREQ(getFilePath(c.path), c.folder);
        EXPECT_STREQ(getFileName(c.path), c.name);
        EXPECT_STREQ(getFileExt(c.path), c.extension);
    }
    EXPECT_EQ(getFileName((std::string(5000, 'n') + ".x").c_str()), std::string(1023, 'n'));
}

TEST(FileNames, CountsAStreamAndPutsItBack)
{
    using Stream = std::unique_ptr<FILE, int (*)(FILE*)>;
    const Stream file(std::tmpfile(), std::fclose);
    const std::string content = "abcdef" + std::string(70000, 'x');
    std::fwrite(content.data(), 1, content.size(), file.get());
    std::fseek(file.get(), 1, SEEK_SET);
    EXPECT_EQ(fsize(file.get()), 70005);
    EXPECT_EQ(std::fgetc(file.get()), 'b');

    EXPECT_GT(fsize(Stream(std::fopen("/dev/zero", "rb"), std::fclose).get()), 64L << 20);
    EXPECT_EQ(fsize(Stream(std::fopen("/", "rb"), std::fclose).get()), 0);
    EXPECT_EQ(fsize(nullptr), 0);
}
