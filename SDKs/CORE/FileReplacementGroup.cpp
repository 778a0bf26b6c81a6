// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/FileReplacementGroup.h"

#include "CORE/FileTarget.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace Core
{
static bool isSameFolder(const fs::path& one, const fs::path& other)
{
    std::error_code error;
    return one == other || fs::equivalent(one, other, error);
}

FileReplacementGroup::FileReplacementGroup(const char* name)
    : folder((fs::path(name && *name ? name : ".") / "").parent_path()) // without a separator at its end
{
    folderDescriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folderDescriptor >= 0)
    {
        HiddenFile::removeLeftovers(folder);
        leader = HiddenFile(folder);
    }
    if (!leader.isOpen())
        result = FileResult::failed(errno);
}

FileReplacementGroup::~FileReplacementGroup()
{
    members.clear(); // before the file that leads them
    if (folderDescriptor >= 0)
        close(folderDescriptor);
}

FileResult FileReplacementGroup::write(const char* path, const void* data, unsigned long long size)
{
    if (!result)
        return result;
    const FileTarget place(path);
    if (!place.result)
        return place.result;
    if (!isSameFolder(place.folder(), folder))
    {
        auto other = std::make_unique<FileReplacement>(path);
        other->write(data, size);
        FileResult written = other->getResult();
        if (written)
            elsewhere.push_back(std::move(other));
        return written;
    }
    Member member{HiddenFile(leader, unsigned(members.size())), place.path.string()};
    if (!member.hidden.isOpen() || !place.passOnPermissions(member.hidden.descriptor()) ||
        !writeAll(member.hidden.descriptor(), data, size) || !member.hidden.close())
        return FileResult::failed(errno);
    members.push_back(std::move(member));
    return {};
}

FileResult FileReplacementGroup::flush()
{
    if (result && !members.empty() && syncfs(folderDescriptor) != 0)
        result = FileResult::failed(errno);
    return result;
}

FileResult FileReplacementGroup::commit()
{
    if (!flush())
        return result;
    FileResult first;
    for (Member& member : members)
    {
        const bool done = member.hidden.moveTo(member.target);
        committed += done ? 1 : 0;
        if (!done && first)
            first = FileResult::failed(errno);
    }
    for (const auto& file : elsewhere)
    {
        committed += file->commit() ? 1 : 0;
        if (first)
            first = file->getResult();
    }
    return first;
}
}
