// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/CFastFile.h"
#include "CORE/File.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace file = Core::File;

TEST(File, ReadsRegularFilesAndNeverWaitsForAPipe)
{
    const TempFolder folder;
    mkfifo((folder / "pipe").c_str(), 0600); // opening it would wait for a writer
    std::filesystem::create_directory(folder / "folder");
    folder.put("file", "content");
    const std::pair<const char*, const char*> cases[] = {{"file", ""},
                                                         {"pipe", "it is not a regular file"},
                                                         {"folder", "Is a directory"},
                                                         {"none", "No such file or directory"}};
    for (const auto& [name, problem] : cases)
    {
        const std::string path = folder / name;
        const bool isRead = !*problem;
        std::string content;
        char buffer[8] = "";
        EXPECT_EQ(file::readFile(path.c_str(), 7, content).problem, problem);
        EXPECT_EQ(content, isRead ? "content" : "") << name;
        EXPECT_EQ(file::loadBufferFromFile(path.c_str(), buffer, 7), isRead ? 0 : -1) << name;
        EXPECT_STREQ(buffer, content.c_str());
        EXPECT_EQ(CFastFile().open(path.c_str(), 0), isRead) << name;
    }
    std::string content;
    EXPECT_EQ(file::readFile((folder / "file").c_str(), 6, content).problem, "it is longer than 6 bytes");
}

TEST(File, KnowsTheFoldersOfTheSystem)
{
    const TempEnvironment home("HOME", "/home/someone"), desktopData("XDG_DATA_HOME", nullptr),
        ownData("LODEX_DATA_HOME", nullptr);
    const auto folder = [](file::osPathType type, const char* sub)
    {
        std::string out(1024, '#');
        file::getOSPath(out.data(), type, sub);
        return std::string(out.c_str());
    };
    EXPECT_EQ(folder(file::kSupportFolder, "Torvane\\live"), "/usr/local/share/Torvane/live");
    EXPECT_EQ(folder(file::kUserSupportFolder, "x"), "/home/someone/.local/share/x");
    const TempEnvironment desktop("XDG_DATA_HOME", "/data");
    EXPECT_EQ(folder(file::kUserSupportFolder, ""), "/data/");
    const TempEnvironment own("LODEX_DATA_HOME", "/own");
    EXPECT_EQ(folder(file::kUserSupportFolder, ""), "/own/");
    EXPECT_EQ(folder(file::kUserSupportFolder, std::string(2000, 'x').c_str()),
              "/own/" + std::string(1018, 'x'));
}
