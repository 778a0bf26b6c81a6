// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/FileReplacement.h"

#include "CORE/FileTarget.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace Core
{
static void syncFolder(const std::filesystem::path& folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

FileReplacement::FileReplacement(const char* path)
{
    const FileTarget place(path);
    result = place.result;
    if (!result)
        return;
    target = place.path.string();
    HiddenFile::removeLeftovers(place.folder());
    hidden = HiddenFile(place.folder());
    if (!hidden.isOpen() || !place.passOnPermissions(hidden.descriptor()))
        fail(errno);
}

bool FileReplacement::fail(int error)
{
    if (result)
        result = FileResult::failed(error);
    return false;
}

bool FileReplacement::write(const void* data, unsigned long long size)
{
    if (!result)
        return false;
    if (!data && size > 0)
        return fail(EINVAL);
    flushed = false;
    return writeAll(hidden.descriptor(), data, size) || fail(errno);
}

bool FileReplacement::flush()
{
    if (!result)
        return false;
    flushed = flushed || fsync(hidden.descriptor()) == 0 || fail(errno);
    return flushed;
}

// The hidden file's lock is held until it has its new name.
bool FileReplacement::commit()
{
    if (!flush())
        return false;
    if (!hidden.moveTo(target))
        return fail(errno);
    syncFolder(folderOf(target));
    return true;
}
}
