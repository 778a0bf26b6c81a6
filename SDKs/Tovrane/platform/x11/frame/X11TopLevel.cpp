// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/frame/X11TopLevel.h"

#include <cstdint>

namespace Tovra
{
std::unique_ptr<X11TopLevel> X11TopLevel::open(const std::string& title, int width, int height)
{
    auto connection = X11Connection::open();
    if (connection == nullptr)
        return nullptr;
    std::unique_ptr<X11TopLevel> made{new X11TopLevel(std::move(connection), title, width, height)};
    return made->window.isGone() ? nullptr : std::move(made);
}

X11TopLevel::X11TopLevel(std::shared_ptr<X11Connection> server, const std::string& title, int width,
                         int height)
    : window(server, *this, X11Window::child, 0, {0, 0, width, height})
{
    if (window.isGone())
        return;
    const auto name = [&](xcb_atom_t property)
    {
        xcb_change_property(server->xcb(), XCB_PROP_MODE_REPLACE, window.id(), property,
                            server->atom(X11Atom::utf8String), 8, std::uint32_t(title.size()), title.data());
    };
    name(server->atom(X11Atom::wmName));
    name(XCB_ATOM_WM_NAME);
    const xcb_atom_t close = server->atom(X11Atom::wmDeleteWindow);
    window.setProperty(server->atom(X11Atom::wmProtocols), XCB_ATOM_ATOM, &close, 1);
    fixSize(width, height);
    window.show();
}

// Least and greatest size, as window managers read them.
void X11TopLevel::fixSize(int width, int height)
{
    constexpr std::uint32_t leastAndGreatest = 16 | 32;
    const auto w = std::uint32_t(width);
    const auto h = std::uint32_t(height);
    const std::uint32_t hints[18] = {leastAndGreatest, 0, 0, 0, 0, w, h, w, h};
    window.setProperty(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints, std::size(hints));
}

void* X11TopLevel::parent() const
{
    return reinterpret_cast<void*>(std::uintptr_t(window.id()));
}

void X11TopLevel::setSize(int width, int height)
{
    fixSize(width, height);
    window.setPlace({window.place().x, window.place().y, width, height});
}

void X11TopLevel::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    const X11Connection& server = window.connection();
    const auto& message = as<xcb_client_message_event_t>(event);
    if (type != XCB_CLIENT_MESSAGE || message.type != server.atom(X11Atom::wmProtocols) ||
        message.data.data32[0] != server.atom(X11Atom::wmDeleteWindow) || onClose == nullptr)
        return;
    const std::function<void()> close = onClose; // the call may end this
    close();
}
}
