// SPDX-License-Identifier: GPL-3.0-or-later
// Files and folders. All calls block and belong to the window thread or a worker, never to the audio
// thread. Nothing throws; the value that is returned shows a failure.
#pragma once

#include "CORE/FileResult.h"

#include <cstddef>
#include <cstdio>
#include <string>

namespace Core::File
{
// Bytes in the file; the largest int if there are more, -1 if there is no such file.
int getFileSize(const char* path);

// Creates all missing folders of path, the last one included. Done if path is a folder afterwards.
FileResult mkDirRecursive(const char* path);

// Opens a regular file for reading, and nothing else: a pipe or a device would block. If that fails, file is
// null.
FileResult openRegularFile(const char* path, FILE*& file);

// The whole regular file, if it has no more than `most` bytes.
FileResult readFile(const char* path, size_t most, std::string& content);

// Puts a file of size bytes in the place of path, as a whole or not at all (see FileReplacement.h).
FileResult replaceFile(const char* path, const void* data, unsigned long long size);

// Renames a file unless there is one of the new name. If the file system cannot do that in one step, there is
// a short time between the check for the target and the renaming.
FileResult renameToFreeName(const char* from, const char* to);

// replaceFile with 0 on success and -1 if the file could not be written.
int saveBufferToFile(const char* path, const void* buffer, unsigned long long size);

// Reads the first size bytes of a regular file. 4 for a null buffer, -1 if the file cannot be opened,
// otherwise 0: a shorter file leaves the rest of the buffer as it was and is not reported.
int loadBufferFromFile(const char* path, void* buffer, unsigned long long size);

// Turns the separators of a path: type 1 makes every "/" a "\", any other type every "\" a "/". out holds
// at least as much as in and may be in itself. A null out answers in a buffer of this thread, cut to 1023
// characters, which lasts until the next such call.
char* convertFilePath(int type, const char* in, char* out);

enum osPathType
{
    kDesktopFolder = 0,
    kSupportFolder = 1,
    kSharedSupportFolder = 2, // the same place as 1
    kUserSupportFolder = 3,
};

// The folder of that kind, with "/" as separator and one at its end, followed by sub as it stands (null
// counts as empty). out has at least 1024 bytes; a longer path is cut. The folder need not exist.
void getOSPath(char* out, osPathType type, const char* sub);
}
