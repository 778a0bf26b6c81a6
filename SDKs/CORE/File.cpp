#include "CORE/File.h"

#include "CORE/CString.h"
#include "CORE/FileReplacement.h"
#include "CORE/UserFolders.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace Core::File
{
constexpr int pathBuffer = 1024; // bytes of a path in a fixed buffer, its end included

int getFileSize(const char* path)
{
    struct stat info;
    if (!path || stat(path, &info) != 0)
        return -1;
    return int(std::min<off_t>(info.st_size, INT_MAX));
}

bool mkDirRecursive(const char* path)
{
    if (!path)
        return false;
    std::error_code error;
    std::filesystem::create_directories(path, error);
    return std::filesystem::is_directory(path, error);
}

bool replaceFile(const char* path, const void* data, unsigned long long size)
{
    FileReplacement file(path);
    return file.write(data, size) && file.commit();
}

int saveBufferToFile(const char* path, const void* buffer, unsigned long long size)
{
    return replaceFile(path, buffer, size) ? 0 : -1;
}

int loadBufferFromFile(const char* path, void* buffer, unsigned long long size)
{
    if (!buffer)
        return 4;
    FILE* const file = path ? std::fopen(path, "rbe") : nullptr;
    if (!file)
        return -1;
    [[maybe_unused]] const size_t got = std::fread(buffer, 1, size, file);
    std::fclose(file);
    return 0;
}

char* convertFilePath(int type, const char* in, char* out)
{
    static thread_local char ownBuffer[pathBuffer];
    const char* const text = in ? in : "";
    size_t length = std::strlen(text);
    if (!out)
    {
        out = ownBuffer;
        length = std::min(length, size_t(pathBuffer - 1));
    }
    const char from = type == 1 ? '/' : '\\';
    const char to = type == 1 ? '\\' : '/';
    std::transform(text, text + length, out, [=](char c) { return c == from ? to : c; });
    out[length] = 0;
    return out;
}

static std::string folderOf(osPathType type)
{
    switch (type)
    {
    case kDesktopFolder:
        return homeFolder() + "/Desktop/";
    case kUserSupportFolder:
        return userDataFolder() + "/";
    case kSupportFolder:
    case kSharedSupportFolder:
        break;
    }
    return "/usr/local/share/";
}

void getOSPath(char* out, osPathType type, const char* sub)
{
    std::string path = folderOf(type) + (sub ? sub : "");
    std::replace(path.begin(), path.end(), '\\', '/');
    CString(out, pathBuffer).set(path.c_str());
}
}
