// SPDX-License-Identifier: GPL-3.0-or-later
// The file panel of the desktop: its own program, which runs while the toolkit's timers and this frame's
// connection go on. Meanwhile the frame takes no clicks and keys.
#pragma once

#include "Tovrane/platform/x11/overlays/X11OverlayHost.h"
#include "Tovrane/window/IFileSelector.h"

namespace Tovra
{
// [window thread]
class X11FileSelector : public IFileSelector, private FrameOverlay
{
public:
    explicit X11FileSelector(X11OverlayHost& frame) : owner(&frame) {}

    // Tells the user when there is no program to ask.
    std::vector<std::string> run(const FileSelectorOptions& options) override;

protected:
    ~X11FileSelector() override = default;

private:
    void overlayLost() override {} // run looks whether the frame is open
    long overlayKeyDown(const TovraKeyCode&, const std::string&) override { return kKeyConsumed; }
    void tellThatThereIsNone();

    const Kept<X11OverlayHost> owner;
    OverlayHandle handle;
};
}
