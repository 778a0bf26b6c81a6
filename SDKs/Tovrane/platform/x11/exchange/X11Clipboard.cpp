// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/exchange/X11Clipboard.h"

#include <algorithm>
#include <utility>

namespace Tovra
{
namespace
{
// Every client takes that much in one request. More would have to be sent in pieces, which texts of one line
// never need.
constexpr std::size_t mostOffered = std::size_t(64) << 10;
}

X11Clipboard::X11Clipboard(std::shared_ptr<X11Connection> server)
    : window(std::move(server), *this, X11Window::hidden, 0, {})
{
}

xcb_atom_t X11Clipboard::nameOf(const X11Connection& server, Which which)
{
    return which == copied ? server.atom(X11Atom::clipboard) : xcb_atom_t(XCB_ATOM_PRIMARY);
}

std::string* X11Clipboard::offeredUnder(xcb_atom_t name)
{
    for (const Which which : {copied, selection})
        if (name == nameOf(window.connection(), which) && isOurs[which])
            return &offered[which];
    return nullptr;
}

void X11Clipboard::offer(Which which, std::string text)
{
    if (text.empty() || text.size() > mostOffered)
        return;
    X11Connection& server = window.connection();
    offered[which] = std::move(text);
    isOurs[which] = true;
    since[which] = server.lastTime();
    xcb_set_selection_owner(server.xcb(), window.id(), nameOf(server, which), since[which]);
    server.flush();
}

void X11Clipboard::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    if (type == XCB_SELECTION_REQUEST)
        return answer(as<xcb_selection_request_event_t>(event));
    if (type != XCB_SELECTION_CLEAR)
        return;
    const auto& lost = as<xcb_selection_clear_event_t>(event);
    for (const Which which : {copied, selection})
        if (lost.selection == nameOf(window.connection(), which))
        {
            isOurs[which] = false;
            offered[which].clear();
        }
}

void X11Clipboard::answer(const xcb_selection_request_event_t& request)
{
    X11Connection& server = window.connection();
    const xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
    const std::string* text = offeredUnder(request.selection);
    const bool isWritten = text != nullptr && write(request, property, *text);
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = isWritten ? property : xcb_atom_t(XCB_ATOM_NONE);
    char sent[32] = {};
    static_assert(sizeof notify <= sizeof sent);
    std::copy_n(reinterpret_cast<const char*>(&notify), sizeof notify, sent);
    xcb_send_event(server.xcb(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, sent);
    server.flush();
}

bool X11Clipboard::write(const xcb_selection_request_event_t& request, xcb_atom_t property,
                         const std::string& text)
{
    X11Connection& server = window.connection();
    const xcb_atom_t utf8 = server.atom(X11Atom::utf8String);
    const xcb_atom_t mime = server.atom(X11Atom::textUtf8);
    const xcb_atom_t targets = server.atom(X11Atom::targets);
    const xcb_atom_t timestamp = server.atom(X11Atom::timestamp);
    const auto put = [&](xcb_atom_t type, std::uint8_t bits, std::size_t count, const void* data)
    {
        xcb_change_property(server.xcb(), XCB_PROP_MODE_REPLACE, request.requestor, property, type, bits,
                            std::uint32_t(count), data);
        return true;
    };
    if (request.target == targets)
    {
        const xcb_atom_t forms[] = {targets, timestamp, utf8, mime};
        return put(XCB_ATOM_ATOM, 32, std::size(forms), forms);
    }
    if (request.target == timestamp)
        return put(XCB_ATOM_INTEGER, 32, 1,
                   &since[request.selection == XCB_ATOM_PRIMARY ? selection : copied]);
    return (request.target == utf8 || request.target == mime) &&
           put(request.target, 8, text.size(), text.data());
}
}
