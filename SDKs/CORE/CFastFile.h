// SPDX-License-Identifier: GPL-3.0-or-later
// A file that is read through a buffer or written, and the short way to write one as a whole.
//
// A written file takes its place only in close() (see FileReplacement.h): one that is dropped before,
// or could not be written to its end, leaves the former file.
#pragma once

#include "CORE/FileReplacement.h"

#include <cstdarg>
#include <cstdio>
#include <optional>

// [window thread] [worker]  One thread at a time.
class CFastFile
{
public:
    static constexpr unsigned kWriting = 1u << 2; // flag: the file is written; otherwise it is read

    CFastFile() = default;
    ~CFastFile();
    CFastFile(const CFastFile&) = delete;
    CFastFile& operator=(const CFastFile&) = delete;

    // Opens the file of that name, which is taken as it stands. False if that fails. A file that was still
    // open is dropped.
    bool open(const char* name, unsigned flags);
    // The same with a printf format and at least one argument for it. (It is a template only so that a lone
    // name is never taken for a format.)
    template <int = 0>
    [[gnu::format(printf, 2, 4)]] bool open(const char* format, unsigned flags, ...);

    // The count of bytes read; 0 at the end, on an error, or in a file that is written.
    unsigned long long read(void* out, unsigned long long size);
    // False if not all bytes went out, or the file is read.
    bool write(const void* data, unsigned long long size);
    // Ends reading, or puts the written file in its place. False if nothing was open or the latter failed.
    bool close();

    // Opens, writes all and closes; true if the file is now as given. The int has no meaning.
    static bool writeFile(const char* name, const void* data, unsigned long long size, int);
    template <int = 0>
    [[gnu::format(printf, 1, 5)]] static bool writeFile(const char* format, const void* data,
                                                        unsigned long long size, int, ...);

private:
    static std::string formatName(const char* format, va_list arguments);

    FILE* reading = nullptr;
    std::optional<Core::FileReplacement> writing;
};

template <int>
bool CFastFile::open(const char* format, unsigned flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const auto name = formatName(format, arguments);
    va_end(arguments);
    return open(name.c_str(), flags);
}

template <int>
bool CFastFile::writeFile(const char* format, const void* data, unsigned long long size, int unused, ...)
{
    va_list arguments;
    va_start(arguments, unused);
    const auto name = formatName(format, arguments);
    va_end(arguments);
    return writeFile(name.c_str(), data, size, unused);
}
