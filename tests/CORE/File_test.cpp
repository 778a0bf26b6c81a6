#include "CORE/File.h"
#include "CORE/FileReplacement.h"
#include "support/TempFolder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace file = Core::File;

// As on a disk that is full behind so many bytes.
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

TEST(File, AFailedSaveLeavesTheFormerFileAndNothingBeside)
{
    const TempFolder folder;
    const auto path = folder.put("preset", "former");
    EXPECT_EQ(saveOnFullDisk(path, std::string(1 << 20, 'x'), 100000), -1);
    EXPECT_EQ(saveOnFullDisk(path, "seen only when the buffer is flushed", 10), -1);
    EXPECT_EQ(file::saveBufferToFile(path.c_str(), nullptr, 6), -1);
    EXPECT_EQ(folder.content("preset"), "former");
    EXPECT_EQ(folder.names(), std::set<std::string>{"preset"});
}

TEST(File, AFullDiskLeavesTheFormerFile)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "disk");
    if (mount("tmpfs", (folder / "disk").c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no right to mount a small disk";
    const std::string former(20000, 'f'), larger(60000, 'x'), path = folder / "disk/preset";
    EXPECT_EQ(file::saveBufferToFile(path.c_str(), former.data(), former.size()), 0);
    EXPECT_EQ(file::saveBufferToFile(path.c_str(), larger.data(), larger.size()), -1);
    EXPECT_EQ(folder.content("disk/preset"), former);
    EXPECT_EQ(file::saveBufferToFile(path.c_str(), former.data(), former.size() - 1), 0);
    EXPECT_EQ(folder.content("disk/preset").size(), former.size() - 1);
    umount((folder / "disk").c_str());
}

namespace
{
enum class Saving
{
    killed,
    finished,
    notTraced,
};

// Saves in a process of its own, which is killed when it has come to the edge of a system call for the
// count-th time: ahead of the first call, behind it, ahead of the second, and so on.
Saving saveUntilKilled(const std::string& path, const std::string& content, int count)
{
    const pid_t child = fork();
    if (child == 0)
    {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(2);
        raise(SIGSTOP);
        _exit(file::saveBufferToFile(path.c_str(), content.data(), content.size()) == 0 ? 0 : 1);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
        return Saving::notTraced;
    for (; count > 0 && WIFSTOPPED(status); --count)
    {
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
    }
    if (WIFSTOPPED(status))
    {
        kill(child, SIGKILL);
        waitpid(child, &status, 0);
        return Saving::killed;
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? Saving::finished : Saving::notTraced;
}
}

TEST(File, ASaveThatIsKilledAtAnyMomentLeavesTheOldOrTheNewFile)
{
    const TempFolder folder;
    const std::string former(3000, 'f'), next(70000, 'n');
    const std::string path = folder.put("preset", former);
    int sawFormer = 0, sawNext = 0;
    Saving saving = Saving::killed;
    for (int count = 0; saving == Saving::killed; ++count)
    {
        saving = saveUntilKilled(path, next, count);
        if (saving == Saving::notTraced)
            GTEST_SKIP() << "no right to trace a process";
        const std::string content = folder.content("preset");
        ASSERT_TRUE(content == former || content == next) << "killed at call " << count / 2;
        ++(content == former ? sawFormer : sawNext);
        ASSERT_LE(folder.names().size(), 2u); // what former processes left is gone
        ASSERT_EQ(file::saveBufferToFile(path.c_str(), former.data(), count % 2 ? former.size() : 0), 0);
        ASSERT_EQ(folder.names(), std::set<std::string>{"preset"});
        folder.put("preset", former);
    }
    EXPECT_GT(sawFormer, 10); // the kills came in the middle of the save
    EXPECT_GT(sawNext, 1);
}

TEST(File, ASaveRemovesNothingButWhatAKilledOneLeft)
{
    const TempFolder folder;
    Core::FileReplacement running((folder / "running").c_str()); // in another thread, say
    const auto ofRunning = folder.names();
    ASSERT_EQ(ofRunning.size(), 1u);
    std::set<std::string> kept = {".save-1", ".save--1", ".save-1-x", ".save-1-1.dks", "save-1-1"};
    for (const std::string& name : kept)
        folder.put(name, "mine");
    mkfifo((folder / ".save-1-2").c_str(), 0600);
    std::filesystem::create_directory(folder / ".save-1-3");
    std::filesystem::create_symlink("save-1-1", folder / ".save-1-4");
    folder.put(".save-1-1", "left behind");
    folder.put(".save-98765432109876543210-0", "left behind");
    kept.insert({".save-1-2", ".save-1-3", ".save-1-4", "preset"});
    kept.insert(ofRunning.begin(), ofRunning.end());
    EXPECT_EQ(file::saveBufferToFile((folder / "preset").c_str(), "x", 1), 0);
    EXPECT_EQ(folder.names(), kept);
    EXPECT_TRUE(running.write("whole", 5) && running.commit());
    EXPECT_EQ(folder.content("running"), "whole");
}

TEST(File, RefusesToReplaceWhatIsNoWritableFile)
{
    const TempFolder folder;
    mkfifo((folder / "pipe").c_str(), 0600);
    std::filesystem::create_directory(folder / "folder");
    std::filesystem::create_symlink("circle", folder / "circle");
    chmod(folder.put("locked", "former").c_str(), 0400);
    const auto before = folder.names();
    for (const char* name : {"pipe", "folder", "folder/", "circle", "none/file"})
        EXPECT_EQ(file::saveBufferToFile((folder / name).c_str(), "x", 1), -1) << name;
    const bool isRoot = geteuid() == 0; // for whom nothing is locked
    EXPECT_EQ(file::saveBufferToFile((folder / "locked").c_str(), "x", 1), isRoot ? 0 : -1);
    EXPECT_EQ(folder.names(), before);
}

TEST(File, SavingKeepsPermissionsAndLinks)
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
