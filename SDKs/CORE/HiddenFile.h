// SPDX-License-Identifier: GPL-3.0-or-later
// The hidden file in which a save is written, beside its target, until it is complete.
//
// Its name is ".save-", the number of the process, "-" and a count; members of a group append "-" and their
// own count. Whoever writes one holds its lock, which ends with the process: the name alone would not tell
// whether it is still needed, since process numbers are used again. Members have no lock of their own: they
// are needed as long as the file that leads the group is there and locked.
#pragma once

#include <filesystem>
#include <string>

namespace Core
{
// [window thread] [worker]  One thread at a time.
class HiddenFile
{
public:
    HiddenFile() = default;
    // Creates a locked file in the folder, with the permissions of any new file.
    explicit HiddenFile(const std::filesystem::path& folder);
    // Creates a member of a leader's group, in the same folder.
    HiddenFile(const HiddenFile& leader, unsigned number);
    // Removes the file, unless it was moved.
    ~HiddenFile();
    HiddenFile(HiddenFile&& other) noexcept;
    HiddenFile& operator=(HiddenFile&& other) noexcept;

    // If this is false right after the construction, errno says why.
    bool isOpen() const { return fd >= 0; }
    // Open for reading and writing; belongs to this object. -1 if it is not open.
    int descriptor() const { return fd; }
    // Closes the file, which stays on the disk without a lock. False, with errno, if that fails.
    bool close();
    // Renames it over the target. False, with errno, if that fails.
    bool moveTo(const std::string& target);

    // Removes what processes that were killed in the middle of a save have left in the folder.
    static void removeLeftovers(const std::filesystem::path& folder);

private:
    std::string path; // empty if there is no file
    int fd = -1;
};
}
