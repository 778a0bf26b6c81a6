// SPDX-License-Identifier: GPL-3.0-or-later
// How the desktop's own file panels are asked: the words of their command lines, and what they answer. They
// are started as they stand here, without a shell.
#pragma once

#include "Tovrane/window/IFileSelector.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Tovra
{
enum class FileDialogProgram
{
    zenity,
    kdialog
};

// [any thread]  In the order in which they are tried; on a KDE desktop (as XDG_CURRENT_DESKTOP has it) that
// one's own comes first.
std::vector<FileDialogProgram> fileDialogPrograms(const std::string& desktop);

// [any thread]  The program's name and its arguments. window: the number of the window that the panel lies
// over, 0 for none. home: the folder to start in if the options name none.
std::vector<std::string> fileDialogCommand(FileDialogProgram program, const FileSelectorOptions& options,
                                           std::uint32_t window, const std::string& home);

// [any thread]  The absolute paths in what the program wrote.
std::vector<std::string> fileDialogAnswer(FileDialogProgram program, const std::string& output);
}
