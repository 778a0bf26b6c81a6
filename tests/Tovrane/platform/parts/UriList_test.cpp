// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/UriList.h"

#include <gmock/gmock.h>
#include <unistd.h>

using namespace Tovra;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(UriList, NamesLocalFilesInTheirOrder)
{
    char host[256] = "";
    gethostname(host, sizeof host - 1);
    EXPECT_THAT(pathsOfUriList("file:///a/b.wav\r\nfile://localhost/c%20d\r\n# no file\r\nfile:/e\r\n"),
                ElementsAre("/a/b.wav", "/c d", "/e"));
    EXPECT_THAT(pathsOfUriList("file://" + std::string(host) + "/x\nfile:///%C3%A4%25"),
                ElementsAre("/x", "/\xc3\xa4%"));
    EXPECT_THAT(pathsOfUriList(std::string("file:///a\0file:///b", 19)), ElementsAre("/a", "/b"));
}

TEST(UriList, LeavesOutWhatIsNoLocalFile)
{
    for (const char* line : {"http://a/b", "file://elsewhere.example/x", "file:x", "file:///a%2",
                             "file:///a%zz", "file:///a%00b", "/plain/path", "file://", ""})
        EXPECT_THAT(pathsOfUriList(line), IsEmpty()) << line;
}

TEST(UriList, KnowsTextsThatOnlyNameTheFilesAgain)
{
    const std::vector<std::string> files = {"/a b", "/c"};
    EXPECT_TRUE(restatesFiles("/a b\n/c\n", files));
    EXPECT_TRUE(restatesFiles("file:///a%20b\r\nfile:///c", files));
    EXPECT_FALSE(restatesFiles("/a b", files));
    EXPECT_FALSE(restatesFiles("/c\n/a b", files));
    EXPECT_FALSE(restatesFiles("two files", files));
}
