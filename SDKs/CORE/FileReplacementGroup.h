// SPDX-License-Identifier: GPL-3.0-or-later
// Several files of one folder that take their places together, as FileReplacement does for one: a library's
// factory presets, the presets of a bank. The folder is looked through once, and one flush brings all of them
// to the disk before the first takes its place.
#pragma once

#include "CORE/FileReplacement.h"

#include <memory>
#include <vector>

namespace Core
{
// [window thread] [worker]  One thread at a time.
class FileReplacementGroup
{
public:
    // A folder that cannot be written makes every later call fail.
    explicit FileReplacementGroup(const char* folder);
    // Without a commit before it, drops what was written.
    ~FileReplacementGroup();
    FileReplacementGroup(const FileReplacementGroup&) = delete;
    FileReplacementGroup& operator=(const FileReplacementGroup&) = delete;

    // Writes one of the files; a failure does not concern the others. A path that leads out of the folder, by
    // a link, is brought to the disk on its own.
    FileResult write(const char* path, const void* data, unsigned long long size);

    // Once, at the end: brings all that was written to the disk and renames it. If the disk fails, none takes
    // its place; a file that cannot be renamed is left out. Answers the first failure.
    FileResult commit();
    // The files that have taken their places.
    int getCommittedCount() const { return committed; }

private:
    struct Member
    {
        HiddenFile hidden;
        std::string target;
    };

    FileResult flush();

    std::filesystem::path folder;
    HiddenFile leader; // has no content; its lock protects all members
    int folderDescriptor = -1;
    FileResult result;
    std::vector<Member> members; // closed, as a process can only have so many files open
    std::vector<std::unique_ptr<FileReplacement>> elsewhere;
    int committed = 0;
};
}
