#include "Sonvex/FileNames.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

TEST(FileNames, TakesPathsApart)
{
    struct
    {
        const char* path;
        const char* folder;
        const char* name;
        const char* extension;
    } const cases[] = {
        {"/a/b/Kick 1.dks", "/a/b/", "Kick 1", ".dks"},
        {"C:\\a\\b.c\\Kick", "C:\\a\\b.c\\", "Kick", ""},
        {"/mixed\\x.y.fxp", "/mixed\\", "x.y", ".fxp"},
        {"/a.b/", "/a.b/", "", ""},
        {"/a/.hidden", "/a/", "", ".hidden"},
        {"name.", "", "name", "."},
        {"c:name.x", "", "name", ".x"},
        {"/a/b:c.x", "/a/", "b", ".x"},
        {"12:3.x", "", "12", ".x"},
        {"1:2.x", "", "1", ".x"},
        {"", "", "", ""},
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

TEST(FileNames, ComparesTheEndOfThePath)
{
    EXPECT_TRUE(checkFileExtention("/a/b.dks", ".dks"));
    EXPECT_FALSE(checkFileExtention("/a/b.DKS", ".dks"));
    EXPECT_FALSE(checkFileExtention("/a/b.dks.bak", ".dks"));
    EXPECT_FALSE(checkFileExtention("ks", ".dks"));
    EXPECT_FALSE(checkFileExtention(nullptr, ".dks"));
}

TEST(FileNames, CountsAStreamAndPutsItBack)
{
    using Stream = std::unique_ptr<FILE, int (*)(FILE*)>;
    const Stream file(std::tmpfile(), std::fclose);
    EXPECT_EQ(fsize(file.get()), 0);
    const std::string content = "abcdef" + std::string(70000, 'x');
    std::fwrite(content.data(), 1, content.size(), file.get());
    std::rewind(file.get());
    EXPECT_EQ(fsize(file.get()), 70006);
    EXPECT_EQ(std::fgetc(file.get()), 'a');
    EXPECT_EQ(fsize(file.get()), 70005);
    EXPECT_EQ(std::fgetc(file.get()), 'b');

    EXPECT_GT(fsize(Stream(std::fopen("/dev/zero", "rb"), std::fclose).get()), 64L << 20);
    EXPECT_EQ(fsize(Stream(std::fopen("/", "rb"), std::fclose).get()), 0);
    EXPECT_EQ(fsize(nullptr), 0);
}
