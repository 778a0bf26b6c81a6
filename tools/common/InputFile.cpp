// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/common/InputFile.h"

#include "tools/common/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace lodex
{
std::string readInputFile(const std::string& path)
{
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string content;
    std::error_code unknown;
    if (const auto size = std::filesystem::file_size(path, unknown); !unknown)
        content.reserve(size_t(std::min<std::uintmax_t>(size, largestInputFile)));
    char piece[65536];
    while (file && content.size() <= largestInputFile)
    {
        file.read(piece, sizeof piece);
        content.append(piece, size_t(file.gcount()));
    }
    if (content.size() > largestInputFile)
        throw ToolError("it is longer than 64 MiB");
    if (!file.eof()) // a folder opens, and then can't be read
        throw ToolError(std::strerror(errno));
    return content;
}

ToolError cannotRead(const std::string& path, const ToolError& reason)
{
    return ToolError("cannot read " + printable(path) + ": " + reason.what());
}
}
