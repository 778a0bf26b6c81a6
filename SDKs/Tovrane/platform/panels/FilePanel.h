// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop's panel for files, by whichever way there is: the portal, which desktops in a sandbox and
// without have, else zenity or kdialog, else a message in the window that says what is missing.
//
// Nothing waits: each step follows from the run loop.
#pragma once

#include "Sonvex/AnswerOnce.h"
#include "Tovrane/base/RunLoop.h"
#include "Tovrane/platform/panels/PanelWay.h"

#include <memory>
#include <optional>

namespace Tovra
{
class CFrame;

// [window thread]  One panel.
class FilePanel
{
public:
    using Ways = std::vector<std::unique_ptr<PanelWay>>;

    // The ways are tried in this order.
    explicit FilePanel(Ways tried);
    // Closes the panel. If it was open, done is called with no path.
    ~FilePanel() = default;
    FilePanel(const FilePanel&) = delete;
    FilePanel& operator=(const FilePanel&) = delete;

    // Those of this desktop.
    static Ways desktopWays();

    // Once. done is called exactly once, never within this call; it may destroy this object. A message for
    // the user is shown over frame.
    void open(const FileSelectorOptions& shown, std::uint32_t overWindow, CFrame* overFrame,
              IFileSelector::Done done);
    // Closes the panel as if the user had cancelled.
    void cancel();

private:
    using Paths = std::vector<std::string>;

    void tryNextWay();
    void wayEnded(PanelWay::End end, const Paths& paths);
    void later(void (FilePanel::*step)());
    void finish();
    void tellThatThereIsNone() const;

    FileSelectorOptions options;
    std::uint32_t window = 0;
    CFrame* frame = nullptr;
    Paths chosen;
    std::unique_ptr<Sonvex::AnswerOnce<Paths>> answer; // outlives the ways
    Ways ways;
    std::unique_ptr<PanelWay> way; // that is being tried
    bool hasWayEnded = false;
    RepeatingTimer timer;
};
}
