// SPDX-License-Identifier: GPL-3.0-or-later
// A file panel that is a program of the desktop, and writes what was chosen.
#pragma once

#include "Tovrane/platform/panels/PanelWay.h"
#include "Tovrane/platform/parts/ChildProcess.h"
#include "Tovrane/platform/parts/FileDialogCommand.h"

namespace Tovra
{
// [window thread]  The program is killed when this is destroyed.
class ProgramPanel : public PanelWay
{
public:
    explicit ProgramPanel(FileDialogProgram asked) : program(asked) {}
    void open(const FileSelectorOptions& options, std::uint32_t window, Ended ended) override;

private:
    const FileDialogProgram program;
    ChildProcess child;
};

// [window thread]  A variable of the environment, empty if it is not set.
std::string environmentText(const char* name);
}
