// A file that appears only when it is complete: written under another name beside its target, and moved
// over it at the end. What was not committed is removed, and a former file stays as it was.
#pragma once

#include <string>

namespace lodex
{
class OutputFile
{
public:
    // Opens at once, so that a target that can't be written is known before the work begins. A ToolError
    // then; the same for one that exists and is no regular file. A link is followed.
    explicit OutputFile(const std::string& name);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    // What the messages call it: the path as given.
    const std::string& name() const { return path; }
    // Open for reading and writing until then; belongs to this object.
    int descriptor() const { return fd; }

    void write(const void* data, size_t bytes);
    // Closes what was written, but leaves it to the caller that it reaches the disk.
    void endWriting();
    // Puts it on the disk, too.
    void flush();
    // Moves the file to its place.
    void commit();

private:
    [[noreturn]] void fail(int error) const;

    std::string path;
    std::string target;    // path, with links followed
    std::string temporary; // empty once committed
    int fd = -1;
};
}
