// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/File.h"

#include "CORE/CString.h"
#include "CORE/FileReplacement.h"
#include "CORE/UserFolders.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

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

FileResult mkDirRecursive(const char* path)
{
    if (!path)
        return FileResult::failed(ENOENT);
    std::error_code error, unknown;
    std::filesystem::create_directories(path, error);
    if (std::filesystem::is_directory(path, unknown))
        return {};
    return FileResult::failed(error ? error.value() : ENOTDIR);
}

FileResult openRegularFile(const char* path, FILE*& file)
{
    file = nullptr;
    const int descriptor = open(path ? path : "", O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return FileResult::failed(errno);
    FileResult result;
    struct stat info;
    const bool isKnown = fstat(descriptor, &info) == 0;
    if (isKnown && S_ISDIR(info.st_mode))
        result = FileResult::failed(EISDIR);
    else if (isKnown && !S_ISREG(info.st_mode))
        result = {"it is not a regular file"};
    else if (!isKnown || !(file = fdopen(descriptor, "rb")))
        result = FileResult::failed(errno);
    if (!file)
        close(descriptor);
    return result;
}

static FileResult readRest(FILE* file, size_t most, std::string& content)
{
    FileResult tooLong{"it is longer than " + std::to_string(most) + " bytes"};
    struct stat info;
    if (fstat(fileno(file), &info) == 0 && size_t(info.st_size) > most)
        return tooLong;
    char block[65536];
    size_t got = 0;
    while (content.size() <= most && (got = std::fread(block, 1, sizeof block, file)) > 0)
        content.append(block, got);
    if (std::ferror(file))
        return FileResult::failed(EIO);
    return content.size() > most ? tooLong : FileResult();
}

FileResult readFile(const char* path, size_t most, std::string& content)
{
    content.clear();
    FILE* file = nullptr;
    FileResult result = openRegularFile(path, file);
    if (!file)
        return result;
    result = readRest(file, most, content);
    std::fclose(file);
    return result;
}

FileResult replaceFile(const char* path, const void* data, unsigned long long size)
{
    FileReplacement file(path);
    if (file.write(data, size))
        file.commit();
    return file.getResult();
}

FileResult renameToFreeName(const char* from, const char* to)
{
    if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return {};
    if (errno != EINVAL && errno != ENOSYS)
        return FileResult::failed(errno);
    struct stat info;
    if (lstat(to, &info) == 0)
        return FileResult::failed(EEXIST);
    return std::rename(from, to) == 0 ? FileResult() : FileResult::failed(errno);
}

int saveBufferToFile(const char* path, const void* buffer, unsigned long long size)
{
    return replaceFile(path, buffer, size) ? 0 : -1;
}

int loadBufferFromFile(const char* path, void* buffer, unsigned long long size)
{
    if (!buffer)
        return 4;
    FILE* file = nullptr;
    if (!openRegularFile(path, file))
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
