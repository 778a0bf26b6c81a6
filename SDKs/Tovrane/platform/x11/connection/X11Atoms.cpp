// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/connection/X11Atoms.h"

#include "Tovrane/platform/x11/connection/X11Event.h"

#include <string_view>

namespace Tovra
{
namespace
{
constexpr std::array<std::string_view, std::size_t(X11Atom::count)> names = {
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
    "_NET_WM_NAME",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "UTF8_STRING",
    "text/plain;charset=utf-8",
    "text/plain",
    "text/uri-list",
    "_NET_ACTIVE_WINDOW",
    "CLIPBOARD",
    "TARGETS",
    "TIMESTAMP",
    "INCR",
    "_XIM_PROTOCOL",
    "_XEMBED",
    "_XEMBED_INFO",
    "XdndAware",
    "XdndEnter",
    "XdndPosition",
    "XdndStatus",
    "XdndLeave",
    "XdndDrop",
    "XdndFinished",
    "XdndSelection",
    "XdndTypeList",
    "XdndActionCopy",
};
}

void X11Atoms::load(xcb_connection_t* connection)
{
    std::array<xcb_intern_atom_cookie_t, names.size()> asked;
    for (std::size_t i = 0; i < names.size(); ++i)
        asked[i] = xcb_intern_atom(connection, 0, std::uint16_t(names[i].size()), names[i].data());
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        const X11Reply<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(connection, asked[i], nullptr)};
        atoms[i] = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }
}
}
