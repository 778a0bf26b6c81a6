// SPDX-License-Identifier: GPL-3.0-or-later
// A file that takes another's place only when it is complete.
//
// What is written goes into a hidden file in the target's folder. commit() brings it to the disk and
// renames it over the target; until then, and if anything fails, the former file is untouched and nothing is
// left beside it. If the process is killed meanwhile, the next save in that folder removes what it left. The
// new file has the former one's permissions. If the target is a symbolic link, the link stays and what it
// points to is replaced. A target that may not be written, or that is not a regular file, is refused.
//
// For several files of one folder, FileReplacementGroup is quicker.
#pragma once

#include "CORE/FileResult.h"
#include "CORE/HiddenFile.h"

#include <string>

namespace Core
{
// [window thread] [worker]  One thread at a time.
class FileReplacement
{
public:
    // A path that cannot be written makes every later call answer false. Null is such a path.
    explicit FileReplacement(const char* path);
    // Without a commit before it, drops what was written.
    ~FileReplacement() = default;
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    bool isOpen() const { return hidden.isOpen(); }
    // Why it could not be opened, written or committed: the first thing that failed.
    const FileResult& getResult() const { return result; }
    // For libraries that write by themselves. Open for reading and writing; belongs to this object.
    int descriptor() const { return hidden.descriptor(); }

    // Appends size bytes. False if they did not all go out; a commit then fails, too.
    bool write(const void* data, unsigned long long size);
    // Brings what was written to the disk; what is written afterwards needs another flush.
    bool flush();
    // Once, at the end; flushes first. True if the target now is what was written.
    bool commit();

private:
    bool fail(int error);

    std::string target; // with links followed
    HiddenFile hidden;
    FileResult result;
    bool flushed = false;
};
}
