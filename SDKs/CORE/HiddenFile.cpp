// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/HiddenFile.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace Core
{
namespace
{
constexpr std::string_view prefix = ".save-";

// The count of numbers, joined by "-", that follow the prefix; 0 if the name has another form.
int numbersIn(std::string_view name)
{
    if (!name.starts_with(prefix))
        return 0;
    int count = 0;
    for (size_t start = prefix.size(); start <= name.size(); ++count)
    {
        const size_t end = std::min(name.size(), name.find_first_not_of("0123456789", start));
        if (end == start || (end < name.size() && name[end] != '-'))
            return 0;
        start = end + 1;
    }
    return count;
}

int createNew(const std::string& path)
{
    return open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

// Takes the lock of an open hidden file and answers whether the file still has its name. On a file system
// without locks only a file of this process counts as locked.
bool holdsLock(int descriptor, bool own)
{
    struct stat info;
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0 && (!own || errno == EWOULDBLOCK))
        return false;
    return fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode) && info.st_nlink > 0;
}

int openLeftover(const fs::path& file)
{
    return open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
}

void removeIfLeftBehind(const fs::path& file)
{
    const int descriptor = openLeftover(file);
    if (descriptor < 0)
        return;
    if (holdsLock(descriptor, false))
        unlink(file.c_str());
    close(descriptor);
}

void removeMemberIfLeftBehind(const fs::path& file)
{
    const std::string path = file.string();
    const int leader = openLeftover(path.substr(0, path.rfind('-')));
    struct stat info;
    const bool isNeeded = leader >= 0 && !holdsLock(leader, false);
    if (leader >= 0)
        close(leader);
    if (!isNeeded && lstat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode))
        unlink(path.c_str());
}
}

HiddenFile::HiddenFile(const fs::path& folder)
{
    static std::atomic<unsigned> counter{0};
    constexpr int attempts = 1000; // other threads of this process, or what a crash left, may have the name
    for (int i = 0; i < attempts; ++i)
    {
        const auto name = std::string(prefix) + std::to_string(getpid()) + "-" + std::to_string(counter++);
        const std::string candidate = (folder / name).string();
        const int descriptor = createNew(candidate);
        if (descriptor < 0 && errno != EEXIST)
            return;
        if (descriptor >= 0 && holdsLock(descriptor, true))
        {
            path = candidate;
            fd = descriptor;
            return;
        }
        if (descriptor >= 0) // another process that removes leftovers was faster than the lock
            ::close(descriptor);
    }
}

HiddenFile::HiddenFile(const HiddenFile& leader, unsigned number)
    : path(leader.path + "-" + std::to_string(number)), fd(createNew(path))
{
    if (fd < 0)
        path.clear();
}

HiddenFile::~HiddenFile()
{
    if (!path.empty())
        unlink(path.c_str());
    if (fd >= 0)
        ::close(fd);
}

HiddenFile::HiddenFile(HiddenFile&& other) noexcept
    : path(std::exchange(other.path, {})), fd(std::exchange(other.fd, -1))
{
}

HiddenFile& HiddenFile::operator=(HiddenFile&& other) noexcept
{
    std::swap(path, other.path);
    std::swap(fd, other.fd);
    return *this;
}

bool HiddenFile::close()
{
    return ::close(std::exchange(fd, -1)) == 0;
}

bool HiddenFile::moveTo(const std::string& target)
{
    if (std::rename(path.c_str(), target.c_str()) != 0)
        return false;
    path.clear();
    return true;
}

void HiddenFile::removeLeftovers(const fs::path& folder)
{
    std::error_code error;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
    {
        const int numbers = numbersIn(at->path().filename().native());
        if (numbers == 2)
            removeIfLeftBehind(at->path());
        if (numbers == 3)
            removeMemberIfLeftBehind(at->path());
    }
}
}
