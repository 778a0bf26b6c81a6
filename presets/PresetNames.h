// Names of presets as names of files, and the order in which a list shows them. Names come from anywhere: no
// name of a file that is made here leaves the folder that it is put in.
#pragma once

#include <string>
#include <string_view>

namespace Tovra
{
// [any thread]

// The last component of a path without its extension. Only "/" separates: unlike getFileName, this takes "\"
// and ":" for the letters that they are to the file system.
std::string baseNameOf(std::string_view path);

// The name with "_" for what a file's name cannot bear ("/", control characters); "_" for a name of nothing
// but dots. The empty name stays empty.
std::string bearableName(std::string_view name);

// The bearable name, cut so that with its extension it is as long as a file's name can be. The empty name,
// and a dot at the start, become "_": a library passes over hidden files.
std::string fileNameFor(std::string_view name, std::string_view extension);

// Below 0, 0 or above as a stands before, beside or behind b, with each character in its own upper case, the
// same in every country. Both are UTF-8; bytes that are not stand behind all characters.
int compareUpperCase(std::string_view a, std::string_view b);
}
