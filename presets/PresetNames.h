// SPDX-License-Identifier: GPL-3.0-or-later
// Names of presets as names of files, and the order in which a list shows them. Names are untrusted
// input: no file name that is made here leads out of the folder that it is put in.
#pragma once

#include <string>
#include <string_view>

namespace Tovra
{
// [any thread]

// The last component of a path without its extension. Only "/" separates: unlike getFileName, this takes "\"
// and ":" for the letters that they are to the file system.
std::string baseNameOf(std::string_view path);

// The name with "_" for each character that a file name cannot contain ("/", control characters); "_" for a
// name of nothing but dots. The empty name stays empty.
std::string sanitizedName(std::string_view name);

// The sanitized name, cut so that with its extension it is as long as a file's name can be. The empty name,
// and a dot at the start, become "_": a library skips hidden files.
std::string fileNameFor(std::string_view name, std::string_view extension);

// Below 0, 0 or above 0 as a sorts before, with or after b. Each character counts as its own upper case,
// independent of the locale. Both are UTF-8; bytes that are not sort after all characters.
int compareUpperCase(std::string_view a, std::string_view b);
}
