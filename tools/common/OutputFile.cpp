#include "tools/common/OutputFile.h"

#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace lodex
{
static mode_t modeOfNewFiles()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

OutputFile::OutputFile(const std::string& name) : path(name), target(name)
{
    std::error_code missing;
    if (const auto followed = std::filesystem::canonical(path, missing); !missing)
        target = followed.string();
    if (std::filesystem::path(target).filename().empty())
        throw ToolError(inQuotes(path) + " is not the name of a file");

    mode_t mode = modeOfNewFiles();
    if (struct stat former; stat(target.c_str(), &former) == 0)
    {
        if (!S_ISREG(former.st_mode))
            throw ToolError("cannot write " + printable(path) + ": it is not a regular file");
        if (access(target.c_str(), W_OK) != 0) // moving another file over it would not ask
            fail(errno);
        mode = former.st_mode & 07777;
    }
    std::string beside = (std::filesystem::path(target).parent_path() / ".lodex-XXXXXX").string();
    fd = mkstemp(beside.data());
    if (fd < 0)
        fail(errno);
    temporary = beside;
    fchmod(fd, mode);
}

OutputFile::~OutputFile()
{
    if (fd >= 0)
        close(fd);
    if (!temporary.empty())
        unlink(temporary.c_str());
}

void OutputFile::write(const void* data, size_t bytes)
{
    for (auto next = static_cast<const char*>(data); bytes > 0;)
    {
        const ssize_t written = ::write(fd, next, bytes);
        if (written < 0)
            fail(errno);
        next += written;
        bytes -= size_t(written);
    }
}

void OutputFile::endWriting()
{
    if (close(std::exchange(fd, -1)) != 0)
        fail(errno);
}

void OutputFile::flush()
{
    if (fsync(fd) != 0)
        fail(errno);
    endWriting();
}

void OutputFile::commit()
{
    if (rename(temporary.c_str(), target.c_str()) != 0)
        fail(errno);
    temporary.clear();
}

void OutputFile::fail(int error) const
{
    throw ToolError("cannot write " + printable(path) + ": " + std::strerror(error));
}
}
