// SPDX-License-Identifier: GPL-3.0-or-later
// Fetches one of the two texts that X clients share, for the text field that owns this object.
#pragma once

#include "Tovrane/platform/x11/exchange/X11Clipboard.h"
#include "Tovrane/platform/x11/exchange/X11Transfer.h"

#include <functional>
#include <string>

namespace Tovra
{
// [window thread]
class X11Paste
{
public:
    explicit X11Paste(std::shared_ptr<X11Connection> server);

    // The callback gets the text in UTF-8, not checked, or is never called if there is none. A new request
    // cancels one that is still open, and so does the end of this object.
    void ask(X11Clipboard::Which which, std::function<void(const std::string&)> callback);

private:
    void askFor(xcb_atom_t selection, xcb_atom_t form);

    const std::shared_ptr<X11Connection> server;
    X11Transfer transfer;
    std::function<void(const std::string&)> asker;
};
}
