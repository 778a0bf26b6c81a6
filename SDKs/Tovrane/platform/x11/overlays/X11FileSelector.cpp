// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/overlays/X11FileSelector.h"

#include <utility>

namespace Tovra
{
void X11FileSelector::run(const FileSelectorOptions& options, Done done)
{
    if (panel || !handle.open(owner->overlays(), *this, OverlayKind::panel))
        return done({});
    self.reset(this);
    const auto closed = [this, done = std::move(done)](std::vector<std::string> paths)
    {
        const Kept<X11FileSelector> alive = self;
        self.reset();
        handle.close();
        done(std::move(paths));
        panel.reset();
    };
    panel = std::make_unique<FilePanel>(FilePanel::desktopWays());
    panel->open(options, owner->windowId(), owner->getFrame(), closed);
}

void X11FileSelector::cancel()
{
    if (panel)
        panel->cancel();
}

void X11FileSelector::overlayLost()
{
    const Kept<X11FileSelector> alive(this);
    const auto closing = std::move(panel); // calls back now
}
}
