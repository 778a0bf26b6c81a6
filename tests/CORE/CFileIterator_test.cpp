#include "CORE/CFileIterator.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

static std::multiset<std::string> walk(const char* folder)
{
    std::multiset<std::string> found;
    CFileIterator entries(folder, true, 7);
    for (char name[261]; entries.findNext(name);)
        found.insert(name);
    char name[261];
    EXPECT_FALSE(entries.findNext(name)) << "the end lasts";
    return found;
}

TEST(CFileIterator, ListsVisibleEntriesAndMarksFolders)
{
    const TempFolder folder;
    const std::string longest(255, 'n'); // of this file system
    for (const char* name : {"a %s.dks", "b\\c", ".hidden", longest.c_str()})
        folder.put(name, "");
    for (const char* name : {"group", ".git"})
        std::filesystem::create_directory(folder / name);
    std::filesystem::create_directory_symlink("group", folder / "link");
    std::filesystem::create_symlink("nowhere", folder / "dangling");

    EXPECT_EQ(walk(folder.path.c_str()),
              (std::multiset<std::string>{"a %s.dks", "b\\c", longest, "/group", "/link", "dangling"}));
    EXPECT_TRUE(walk((folder / "group").c_str()).empty());
    EXPECT_TRUE(walk((folder / "none").c_str()).empty());
    EXPECT_TRUE(walk((folder / "b\\c").c_str()).empty()) << "a file has no entries";
    EXPECT_TRUE(walk(nullptr).empty());
}
