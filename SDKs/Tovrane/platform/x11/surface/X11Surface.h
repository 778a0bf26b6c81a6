// SPDX-License-Identifier: GPL-3.0-or-later
// Shows pictures that lie in memory of their own, at any size: it copies them into one that the server reads.
#pragma once

#include "Tovrane/draw/IBlitTarget.h"
#include "Tovrane/platform/x11/surface/X11Picture.h"

namespace Tovra
{
// [window thread]
class X11Surface
{
public:
    explicit X11Surface(std::shared_ptr<X11Connection> server,
                        X11Picture::Transport transport = X11Picture::sharedIfPossible)
        : copy(std::move(server), transport)
    {
    }

    // Shows the picture at a place of the window, scaled if need be. More than 64 MiB are not shown.
    void show(const X11Window& window, const BlitPicture& picture, const X11Place& target);

    bool isShared() const { return copy.isShared(); }

private:
    X11Picture copy; // of the target's size
};
}
