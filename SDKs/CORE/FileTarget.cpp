// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/FileTarget.h"

#include <cerrno>
#include <unistd.h>

namespace fs = std::filesystem;

namespace Core
{
namespace
{
// The path with symbolic links at its end followed, also to a file that does not exist yet. Nothing if
// they run in a circle.
std::optional<fs::path> followLinks(fs::path path)
{
    constexpr int mostLinks = 40;
    for (int i = 0; i < mostLinks; ++i)
    {
        std::error_code error;
        const fs::path next = fs::read_symlink(path, error);
        if (error)
            return path;
        path = path.parent_path() / next; // an absolute next stands alone
    }
    return {};
}

FileResult replaceable(const fs::path& path, const std::optional<struct stat>& former)
{
    if (path.filename().empty() || path.filename() == "." || path.filename() == "..")
        return {"it is not the name of a file"};
    if (former && S_ISDIR(former->st_mode))
        return FileResult::failed(EISDIR);
    if (former && !S_ISREG(former->st_mode))
        return {"it is not a regular file"};
    if (former && access(path.c_str(), W_OK) != 0) // moving another file over it would not ask
        return FileResult::failed(errno);
    return {};
}
}

FileTarget::FileTarget(const char* name)
{
    const auto resolved = followLinks(name ? name : "");
    if (!resolved)
    {
        result = FileResult::failed(ELOOP);
        return;
    }
    path = *resolved;
    if (struct stat info; stat(path.c_str(), &info) == 0)
        former = info;
    result = replaceable(path, former);
}

fs::path folderOf(const fs::path& file)
{
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// Owner first: changing it would take back some of the permissions. Only root may give a file away.
bool FileTarget::passOnPermissions(int descriptor) const
{
    if (!former)
        return true;
    [[maybe_unused]] const int given = fchown(descriptor, former->st_uid, former->st_gid);
    return fchmod(descriptor, former->st_mode & 07777) == 0;
}

bool writeAll(int descriptor, const void* data, unsigned long long size)
{
    for (auto next = static_cast<const char*>(data); size > 0;)
    {
        const ssize_t written = ::write(descriptor, next, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        next += written;
        size -= static_cast<unsigned long long>(written);
    }
    return true;
}
}
