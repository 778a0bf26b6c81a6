// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/common/OutputFile.h"

#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

#include <filesystem>

namespace lodex
{
void requireWritten(const std::string& path, const Core::FileResult& result)
{
    if (!result)
        throw ToolError("cannot write " + printable(path) + ": " + result.problem);
}

OutputFile::OutputFile(const std::string& name) : path(name), file(name.c_str())
{
    if (std::filesystem::path(path).filename().empty())
        throw ToolError(inQuotes(path) + " is not the name of a file");
    require(file.isOpen());
}

void OutputFile::write(const void* data, size_t bytes)
{
    require(file.write(data, bytes));
}

void OutputFile::flush()
{
    require(file.flush());
}

void OutputFile::commit()
{
    require(file.commit());
}

void OutputFile::require(bool done) const
{
    if (!done)
        requireWritten(path, file.getResult());
}
}
