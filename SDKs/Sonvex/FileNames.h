// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of a file's name, and the length of an open file.
//
// Texts that are returned lie in a buffer of the calling thread, cut to 1023 characters, until its next call
// of the same function. Null counts as the empty text.
#pragma once

#include <cstdio>

// [any thread but audio]

// True if path ends with extension (".dks"), in the same case.
bool checkFileExtention(const char* path, const char* extension);

// The last component without its extension. "/" and "\" separate; a drive ("C:") at the start is skipped and
// a further ":" ends the path, so that of "a:b:c.x" "b" is left.
const char* getFileName(const char* path);

// The extension of the last component, from its last "." on; empty if it has none.
const char* getFileExt(const char* path);

// Everything up to the last separator, which is included; empty without a separator.
const char* getFilePath(const char* path);

// The bytes from where the stream stands to its end, counted by reading; the stream is then put back to
// where it stood. Counting stops after 64 MiB, which is more than any reader takes, so an endless stream
// ends, too.
long fsize(FILE* stream);
