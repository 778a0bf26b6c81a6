// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/File.h"
#include "CORE/FileReplacementGroup.h"
#include "support/SystemCalls.h"
#include "support/TempFolder.h"

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace file = Core::File;

// As on a disk that is full after that many bytes.
static int saveOnFullDisk(const std::string& path, const std::string& content, rlim_t bytes)
{
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit former;
    getrlimit(RLIMIT_FSIZE, &former);
    const rlimit full{bytes, former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    const int saved = file::saveBufferToFile(path.c_str(), content.data(), content.size());
    setrlimit(RLIMIT_FSIZE, &former);
    std::signal(SIGXFSZ, formerHandler);
    return saved;
}

TEST(FileReplacement, AFailedSaveLeavesTheFormerFileAndNothingBeside)
{
    const TempFolder folder;
    const auto path = folder.put("preset", "former");
    EXPECT_EQ(saveOnFullDisk(path, std::string(1 << 20, 'x'), 100000), -1);
    EXPECT_EQ(saveOnFullDisk(path, "seen only when the buffer is flushed", 10), -1);
    EXPECT_EQ(file::saveBufferToFile(path.c_str(), nullptr, 6), -1);
    EXPECT_EQ(folder.content("preset"), "former");
    EXPECT_EQ(folder.names(), std::set<std::string>{"preset"});
}

TEST(FileReplacement, ASaveThatIsKilledAtAnyMomentLeavesTheOldOrTheNewFiles)
{
    const TempFolder folder;
    const std::string former(3000, 'f'), next(70000, 'n');
    const std::string paths[] = {folder / "preset", folder / "preset 2"};
    const auto saveOne = [&]
    { return file::saveBufferToFile(paths[0].c_str(), next.data(), next.size()) == 0; };
    const auto saveBoth = [&]
    {
        Core::FileReplacementGroup group(folder.path.c_str());
        for (const std::string& path : paths)
            group.write(path.c_str(), next.data(), next.size());
        return bool(group.commit());
    };
    for (const std::function<bool()>& save :
         {std::function<bool()>(saveOne), std::function<bool()>(saveBoth)})
    {
        int sawFormer = 0, sawNext = 0;
        std::optional<bool> saved = false; // it was killed
        for (int count = 0; saved == false && count < 1000; ++count)
        {
            for (const char* name : {"preset", "preset 2"})
                folder.put(name, former);
            int left = count;
            saved = watchSystemCalls(save, [&](long) { return left-- > 0; });
            if (!saved)
                GTEST_SKIP() << "no right to trace a process";
            for (const char* name : {"preset", "preset 2"})
            {
                const std::string content = folder.content(name);
                ASSERT_TRUE(content == former || content == next) << name << ", killed at call " << count / 2;
                ++(content == former ? sawFormer : sawNext);
            }
            ASSERT_EQ(file::saveBufferToFile(paths[0].c_str(), "", 0), 0); // removes what is left behind
            ASSERT_EQ(folder.names(), (std::set<std::string>{"preset", "preset 2"}));
        }
        EXPECT_GT(sawFormer, 20); // the kills came in the middle of the save
        EXPECT_GT(sawNext, 2);
    }
}

TEST(FileReplacementGroup, WritesWhatItCanAndCountsIt)
{
    const TempFolder folder, other;
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_symlink(other / "far", folder / "link");
    chmod(folder.put("former", "former").c_str(), 0604);
    const auto write = [](Core::FileReplacementGroup& group, const std::string& path)
    { return group.write(path.c_str(), "new", 3).problem; };
    {
        Core::FileReplacementGroup dropped(folder.path.c_str());
        EXPECT_EQ(write(dropped, folder / "former"), "");
    }
    EXPECT_EQ(folder.names(), (std::set<std::string>{"folder", "former", "link"}));
    EXPECT_EQ(folder.content("former"), "former");

    Core::FileReplacementGroup group(folder.path.c_str());
    EXPECT_EQ(write(group, folder / "former"), "");
    EXPECT_EQ(write(group, folder / "folder"), "Is a directory");
    EXPECT_EQ(write(group, folder / "link"), "");
    EXPECT_EQ(write(group, folder / "late"), "");
    std::filesystem::create_directory(folder / "late"); // in the meantime
    EXPECT_EQ(group.commit().problem, "Is a directory");
    EXPECT_EQ(group.getCommittedCount(), 2);
    EXPECT_EQ(folder.content("former") + other.content("far"), "newnew");
    EXPECT_EQ(std::filesystem::status(folder / "former").permissions(), std::filesystem::perms(0604));

    Core::FileReplacementGroup nowhere((folder / "none").c_str());
    EXPECT_EQ(write(nowhere, folder / "none/file"), "No such file or directory");
    EXPECT_EQ(nowhere.commit().problem, "No such file or directory");
}

TEST(FileReplacement, ASaveRemovesNothingButWhatAKilledOneLeft)
{
    const TempFolder folder;
    Core::FileReplacement running((folder / "running").c_str()); // in another thread, say
    Core::FileReplacementGroup group(folder.path.c_str());
    ASSERT_TRUE(group.write((folder / "grouped").c_str(), "whole", 5));
    const auto ofRunning = folder.names();
    ASSERT_EQ(ofRunning.size(), 3u);
    std::set<std::string> kept = {".save-1",       ".save--1", ".save-1-x",
                                  ".save-1-1.dks", "save-1-1", ".save-1-1-1-1"};
    for (const std::string& name : kept)
        folder.put(name, "mine");
    mkfifo((folder / ".save-1-2").c_str(), 0600);
    std::filesystem::create_directory(folder / ".save-1-3");
    std::filesystem::create_symlink("save-1-1", folder / ".save-1-4");
    folder.put(".save-1-1", "left behind");
    folder.put(".save-98765432109876543210-0", "left behind");
    folder.put(".save-1-9-0", "left behind by the group");
    kept.insert({".save-1-2", ".save-1-3", ".save-1-4", "preset"});
    kept.insert(ofRunning.begin(), ofRunning.end());
    EXPECT_EQ(file::saveBufferToFile((folder / "preset").c_str(), "x", 1), 0);
    EXPECT_EQ(folder.names(), kept);
    EXPECT_TRUE(running.write("whole", 5) && running.commit());
    EXPECT_TRUE(group.commit());
    EXPECT_EQ(folder.content("running") + folder.content("grouped"), "wholewhole");
}

TEST(FileReplacement, SaysWhyItCannotReplaceWhatIsNoWritableFile)
{
    const TempFolder folder;
    mkfifo((folder / "pipe").c_str(), 0600);
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_symlink("circle", folder / "circle");
    chmod(folder.put("locked", "former").c_str(), 0400);
    const auto before = folder.names();
    const std::pair<const char*, const char*> cases[] = {
        {"pipe", "it is not a regular file"},
        {"folder", "Is a directory"},
        {"folder/", "it is not the name of a file"},
        {"circle", "Too many levels of symbolic links"},
        {"none/file", "No such file or directory"},
        {"locked", geteuid() == 0 ? "" : "Permission denied"}, // for root nothing is locked
    };
    for (const auto& [name, problem] : cases)
        EXPECT_EQ(file::replaceFile((folder / name).c_str(), "x", 1).problem, problem) << name;
    EXPECT_EQ(folder.names(), before);
}

TEST(FileReplacement, SavingKeepsPermissionsAndLinks)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "real");
    std::filesystem::create_symlink("real/preset", folder / "link");

    const mode_t formerMask = umask(027);
    EXPECT_EQ(file::saveBufferToFile((folder / "link").c_str(), "new", 3), 0); // points to nothing yet
    umask(formerMask);
    struct stat info
    {
    };
    stat((folder / "real/preset").c_str(), &info);
    EXPECT_EQ(info.st_mode & 07777, 0640u);

    chmod((folder / "real/preset").c_str(), 0604);
    EXPECT_EQ(file::saveBufferToFile((folder / "link").c_str(), "newer", 5), 0);
    stat((folder / "real/preset").c_str(), &info);
    EXPECT_EQ(info.st_mode & 07777, 0604u);
    EXPECT_EQ(folder.content("real/preset"), "newer");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
}
