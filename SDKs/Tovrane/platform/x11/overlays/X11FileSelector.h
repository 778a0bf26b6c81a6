// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop's file panel over a frame's window. While it is open the frame goes on, but takes no clicks and
// keys. It closes with the frame and with the frame's window.
#pragma once

#include "Tovrane/platform/panels/FilePanel.h"
#include "Tovrane/platform/x11/overlays/X11OverlayHost.h"
#include "Tovrane/window/IFileSelector.h"

#include <memory>

namespace Tovra
{
// [window thread]
class X11FileSelector : public IFileSelector, private FrameOverlay
{
public:
    explicit X11FileSelector(X11OverlayHost& frame) : owner(&frame) {}

    void run(const FileSelectorOptions& options, Done done) override;
    void cancel() override;

protected:
    ~X11FileSelector() override = default;

private:
    void overlayLost() override;
    long overlayKeyDown(const TovraKeyCode&, const std::string&) override { return kKeyConsumed; }

    const Kept<X11OverlayHost> owner;
    OverlayHandle handle;
    Kept<X11FileSelector> self; // while it is open
    std::unique_ptr<FilePanel> panel;
};
}
