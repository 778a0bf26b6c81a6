// SPDX-License-Identifier: GPL-3.0-or-later
// Where a save ends: the path with its links followed, and whether it may be replaced.
#pragma once

#include "CORE/FileResult.h"

#include <filesystem>
#include <optional>
#include <sys/stat.h>

namespace Core
{
// The folder that a file lies in; "." for a bare name.
std::filesystem::path folderOf(const std::filesystem::path& file);

struct FileTarget
{
    // Looks at the path. Null counts as a path that cannot be written.
    explicit FileTarget(const char* name);

    std::filesystem::path path;
    std::optional<struct stat> former; // of the file that is there
    FileResult result;                 // why it may not be replaced

    std::filesystem::path folder() const { return folderOf(path); }
    // Gives the new file the former one's owner and permissions. False if the latter failed.
    bool passOnPermissions(int descriptor) const;
};

// Appends size bytes to an open file. False, with errno, if they did not all go out.
bool writeAll(int descriptor, const void* data, unsigned long long size);
}
