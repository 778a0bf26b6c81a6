// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/CFileIterator.h"

#include "CORE/CString.h"

namespace fs = std::filesystem;

static fs::directory_iterator entriesOf(const char* folder)
{
    std::error_code error;
    return folder ? fs::directory_iterator(folder, error) : fs::directory_iterator();
}

CFileIterator::CFileIterator(const char* folder, bool, int) : entry(entriesOf(folder)) {}

bool CFileIterator::findNext(char* out)
{
    while (entry != fs::directory_iterator())
    {
        std::error_code error;
        const auto name = entry->path().filename().string();
        const bool folder = entry->is_directory(error);
        entry.increment(error); // an error ends the walk
        if (name.front() == '.' || name.size() > size_t(kLongestName))
            continue;
        Core::CString(out, kLongestName + 2).set(((folder ? "/" : "") + name).c_str());
        return true;
    }
    return false;
}
