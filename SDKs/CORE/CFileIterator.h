// SPDX-License-Identifier: GPL-3.0-or-later
// Walks through one folder, an entry at a time, in the order of the file system.
#pragma once

#include <filesystem>

// [window thread] [worker]  One thread at a time.
class CFileIterator
{
public:
    static constexpr int kLongestName = 259; // bytes; a longer name is skipped

    // A folder that does not exist or cannot be read has no entries. The further arguments have no meaning.
    explicit CFileIterator(const char* folder, bool = false, int = 0);
    CFileIterator(const CFileIterator&) = delete;
    CFileIterator& operator=(const CFileIterator&) = delete;

    // Writes the next entry's name to out, which holds at least 261 bytes: a file's as it is, that of a
    // subfolder (or of a link to a folder) with a "/" ahead of it. Names that begin with "." are
    // skipped. False at the end; for another walk, make a new object.
    bool findNext(char* out);

private:
    std::filesystem::directory_iterator entry; // the next one that findNext looks at
};
