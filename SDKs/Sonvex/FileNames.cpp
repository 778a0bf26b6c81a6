// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/FileNames.h"

#include <algorithm>
#include <string_view>

using std::string_view;

namespace
{
struct Answer
{
    char text[1024] = {};

    const char* set(string_view answer)
    {
        const size_t length = answer.copy(text, sizeof text - 1);
        text[length] = 0;
        return text;
    }
};

string_view viewOf(const char* text)
{
    return text ? text : "";
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

size_t startOfLastComponent(string_view path)
{
    const size_t separator = path.find_last_of("/\\");
    return separator == path.npos ? 0 : separator + 1;
}

string_view lastComponent(string_view path)
{
    return path.substr(startOfLastComponent(path));
}
}

bool checkFileExtention(const char* path, const char* extension)
{
    return viewOf(path).ends_with(viewOf(extension));
}

const char* getFileName(const char* path)
{
    static thread_local Answer answer;
    string_view rest = viewOf(path);
    if (rest.size() > 1 && isLetter(rest[0]) && rest[1] == ':')
        rest.remove_prefix(2);
    const auto name = lastComponent(rest.substr(0, rest.find(':')));
    return answer.set(name.substr(0, name.rfind('.')));
}

const char* getFileExt(const char* path)
{
    static thread_local Answer answer;
    const auto name = lastComponent(viewOf(path));
    return answer.set(name.substr(std::min(name.size(), name.rfind('.'))));
}

const char* getFilePath(const char* path)
{
    static thread_local Answer answer;
    const auto whole = viewOf(path);
    return answer.set(whole.substr(0, startOfLastComponent(whole)));
}

long fsize(FILE* stream)
{
    constexpr long enough = 64L << 20;
    if (!stream)
        return 0;
    char block[32768];
    const long start = std::ftell(stream);
    long size = 0;
    size_t got = 0;
    while (size <= enough && (got = std::fread(block, 1, sizeof block, stream)) > 0)
        size += long(got);
    std::clearerr(stream);
    std::fseek(stream, start, SEEK_SET);
    return size;
}
