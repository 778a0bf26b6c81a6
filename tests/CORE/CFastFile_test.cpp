#include "CORE/CFastFile.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

TEST(CFastFile, TakesALoneNameAsItStandsAndFormatsTheRest)
{
    const TempFolder folder;
    EXPECT_TRUE(CFastFile::writeFile((folder / "50% %n%s").c_str(), "abc", 3, false));
    EXPECT_TRUE(CFastFile::writeFile("%s/%02i-%s.dks", "de", 2, false, folder.path.c_str(), 7, "5%"));
    EXPECT_FALSE(CFastFile::writeFile((folder / "none/file").c_str(), "x", 1, false));
    EXPECT_EQ(folder.names(), (std::set<std::string>{"50% %n%s", "07-5%.dks"}));
    EXPECT_EQ(folder.content("50% %n%s"), "abc");

    CFastFile file;
    char read[8] = {};
    EXPECT_TRUE(file.open((folder / "50% %n%s").c_str(), 0));
    EXPECT_EQ(file.read(read, 2), 2u);
    EXPECT_TRUE(file.open("%s/07-5%%.dks", 0, folder.path.c_str()));
    EXPECT_EQ(file.read(read + 2, 5), 2u);
    EXPECT_STREQ(read, "abde");
    EXPECT_FALSE(file.write("x", 1)) << "opened for reading";
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(file.close());
    EXPECT_FALSE(file.open((folder / "none").c_str(), 0));
}

TEST(CFastFile, PutsAWrittenFileInPlaceAtItsCloseAlone)
{
    const TempFolder folder;
    const auto path = folder.put("file", "former");
    {
        CFastFile dropped;
        ASSERT_TRUE(dropped.open(path.c_str(), CFastFile::kWriting));
        EXPECT_TRUE(dropped.write("half of", 7));
    }
    EXPECT_EQ(folder.content("file"), "former");

    CFastFile file;
    ASSERT_TRUE(file.open("%s/%s", CFastFile::kWriting, folder.path.c_str(), "file"));
    EXPECT_TRUE(file.write("one ", 4));
    EXPECT_TRUE(file.write("two", 3));
    EXPECT_EQ(folder.content("file"), "former");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(folder.content("file"), "one two");
    EXPECT_EQ(folder.names(), std::set<std::string>{"file"});
}
