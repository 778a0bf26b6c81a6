// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/overlays/X11FileSelector.h"

#include "Sonvex/MessageBox.h"
#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/platform/parts/ChildProcess.h"
#include "Tovrane/platform/parts/FileDialogCommand.h"

#include <cstdlib>

namespace Tovra
{
namespace
{
constexpr int longestWait = 50; // milliseconds, until a frame that has gone is noticed

std::string variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}
}

std::vector<std::string> X11FileSelector::run(const FileSelectorOptions& options)
{
    const Kept<X11FileSelector> self(this);
    const auto program = chooseFileDialog(variable("XDG_CURRENT_DESKTOP"), ChildProcess::isInstalled);
    if (!program)
        return tellThatThereIsNone(), std::vector<std::string>{};
    if (!handle.open(owner->overlays(), *this, OverlayKind::panel))
        return {};
    const xcb_window_t window = owner->windowId();
    ChildProcess child;
    PollRunLoop loop;
    RunLoop::enter(loop);
    // zenity takes the window that it lies over from the environment.
    if (child.start(fileDialogCommand(*program, options, window, variable("HOME")),
                    {"WINDOWID=" + std::to_string(window)}))
        while (child.isRunning() && owner->isOpen())
            loop.runOnce(longestWait);
    RunLoop::leave(loop);
    handle.close();
    if (!child.succeeded() || !owner->isOpen())
        return {};
    return fileDialogAnswer(*program, child.output());
}

void X11FileSelector::tellThatThereIsNone()
{
    Sonvex::MessageBoxModal(owner->getFrame(), Sonvex::kMessageBoxOk, "No File Panel",
                            "To choose files, install the program \"zenity\" or \"kdialog\".");
}
}
