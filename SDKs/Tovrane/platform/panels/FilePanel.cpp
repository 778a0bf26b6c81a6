// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/panels/FilePanel.h"

#include "Sonvex/MessageBox.h"
#include "Tovrane/platform/panels/PortalPanel.h"
#include "Tovrane/platform/panels/ProgramPanel.h"

#include <utility>

namespace Tovra
{
FilePanel::FilePanel(Ways tried) : ways(std::move(tried)) {}

FilePanel::Ways FilePanel::desktopWays()
{
    Ways result;
    result.push_back(std::make_unique<PortalPanel>(sessionBusAddress()));
    for (const FileDialogProgram program : fileDialogPrograms(environmentText("XDG_CURRENT_DESKTOP")))
        result.push_back(std::make_unique<ProgramPanel>(program));
    return result;
}

void FilePanel::open(const FileSelectorOptions& shown, std::uint32_t overWindow, CFrame* overFrame,
                     IFileSelector::Done done)
{
    options = shown;
    window = overWindow;
    frame = overFrame;
    answer = std::make_unique<Sonvex::AnswerOnce<Paths>>(std::move(done), Paths());
    later(&FilePanel::tryNextWay);
}

// No way is left from within its own call.
void FilePanel::later(void (FilePanel::*step)())
{
    timer.start(1,
                [this, step]
                {
                    timer.stop();
                    (this->*step)();
                });
}

void FilePanel::tryNextWay()
{
    way.reset();
    if (ways.empty())
    {
        tellThatThereIsNone();
        return finish();
    }
    way = std::move(ways.front());
    ways.erase(ways.begin());
    hasWayEnded = false;
    way->open(options, window, [this](PanelWay::End end, const Paths& paths) { wayEnded(end, paths); });
}

void FilePanel::wayEnded(PanelWay::End end, const Paths& paths)
{
    if (std::exchange(hasWayEnded, true))
        return;
    if (end == PanelWay::End::unavailable)
        return later(&FilePanel::tryNextWay);
    if (end == PanelWay::End::chosen)
        chosen = paths;
    if (options.purpose != FileSelectorOptions::openFiles && chosen.size() > 1)
        chosen.resize(1);
    later(&FilePanel::finish);
}

void FilePanel::cancel()
{
    hasWayEnded = true;
    way.reset();
    chosen.clear();
    if (answer && !answer->isGiven())
        later(&FilePanel::finish);
}

void FilePanel::finish()
{
    way.reset();
    const auto given = std::move(answer); // the callback may destroy this object
    given->give(std::move(chosen));
}

void FilePanel::tellThatThereIsNone() const
{
    Sonvex::openMessageBox(frame, Sonvex::kMessageBoxOk, "No File Panel",
                           "To choose files, install the program \"zenity\" or \"kdialog\".", nullptr);
}
}
