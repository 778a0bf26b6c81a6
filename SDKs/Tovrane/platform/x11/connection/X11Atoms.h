// SPDX-License-Identifier: GPL-3.0-or-later
// Atoms: a server's numbers for the names that X clients agree on.
#pragma once

#include <array>
#include <cstddef>
#include <xcb/xproto.h>

namespace Tovra
{
enum class X11Atom : std::size_t
{
    wmProtocols,
    wmDeleteWindow,
    wmName,
    windowType,
    windowTypePopupMenu,
    utf8String,
    textUtf8,
    textPlain,
    uriList,
    activeWindow,
    clipboard,
    targets,
    timestamp,
    incremental,
    ximProtocol,
    xembed,
    xembedInfo,
    dndAware,
    dndEnter,
    dndPosition,
    dndStatus,
    dndLeave,
    dndDrop,
    dndFinished,
    dndSelection,
    dndTypeList,
    dndActionCopy,
    count
};

class X11Atoms
{
public:
    // [window thread]  Asks the server for all of them in one round trip.
    void load(xcb_connection_t* connection);
    xcb_atom_t operator[](X11Atom name) const { return atoms[std::size_t(name)]; }

private:
    std::array<xcb_atom_t, std::size_t(X11Atom::count)> atoms{};
};
}
