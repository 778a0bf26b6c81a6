// A file that takes another's place only when it is complete.
//
// What is written goes into a hidden file in the target's folder. commit() brings it to the disk and
// renames it over the target; until then, and if anything fails, the former file is untouched and nothing is
// left beside it. What a process leaves that is killed meanwhile, the next save in that folder removes. The
// new file has the former one's permissions. If the target is a symbolic link, the link stays and what it
// points to is replaced. A target that may not be written, or that is no plain file, is refused.
#pragma once

#include <cstdio>
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
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    bool isOpen() const { return stream != nullptr; }
    // Appends size bytes. False if they did not all go out; a commit then fails too.
    bool write(const void* data, unsigned long long size);
    // Once, at the end. True if the target now is what was written.
    bool commit();

private:
    bool flushToDisk();

    std::string target;    // links resolved
    std::string temporary; // empty if there is none on the disk
    FILE* stream = nullptr;
    int lock = -1;        // the hidden file's, held until it is renamed or removed
    bool complete = true; // every write so far went out
};
}
