// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/panels/ProgramPanel.h"

#include <cstdlib>

namespace Tovra
{
std::string environmentText(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

void ProgramPanel::open(const FileSelectorOptions& options, std::uint32_t window, Ended ended)
{
    const auto words = fileDialogCommand(program, options, window, environmentText("HOME"));
    const auto answer = [this, ended]
    {
        const auto paths =
            child.succeeded() ? fileDialogAnswer(program, child.output()) : std::vector<std::string>();
        ended(paths.empty() ? End::cancelled : End::chosen, paths);
    };
    // zenity takes the window that it lies over from the environment.
    if (!ChildProcess::isInstalled(words[0].c_str()) ||
        !child.start(words, {"WINDOWID=" + std::to_string(window)}, answer))
        ended(End::unavailable, {});
}
}
