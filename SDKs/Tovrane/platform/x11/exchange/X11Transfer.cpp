// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/exchange/X11Transfer.h"

#include <utility>

namespace Tovra
{
X11Transfer::X11Transfer(std::shared_ptr<X11Connection> server)
    : window(std::move(server), *this, X11Window::hidden, 0, {})
{
}

void X11Transfer::start(xcb_atom_t selection, xcb_atom_t form, xcb_timestamp_t time, Done callback)
{
    X11Connection& server = window.connection();
    done = std::move(callback);
    source = selection;
    wanted = form;
    asked = time;
    inPieces = false;
    content.clear();
    property = server.atomOfName("_TOVRA_TRANSFER_" + std::to_string(++started));
    xcb_convert_selection(server.xcb(), window.id(), selection, form, property, time);
    server.flush();
}

void X11Transfer::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    if (done == nullptr)
        return;
    if (type == XCB_SELECTION_NOTIFY)
        return answered(as<xcb_selection_notify_event_t>(event));
    const auto& change = as<xcb_property_notify_event_t>(event);
    if (type == XCB_PROPERTY_NOTIFY && inPieces && change.state == XCB_PROPERTY_NEW_VALUE &&
        change.atom == property)
        readPiece();
}

void X11Transfer::answered(const xcb_selection_notify_event_t& event)
{
    const bool isRefused = event.property == XCB_ATOM_NONE;
    if (event.selection != source || event.target != wanted || inPieces ||
        (isRefused ? event.time != asked : event.property != property))
        return; // the answer to an earlier question
    if (isRefused)
        return finish(false);
    X11Connection& server = window.connection();
    const auto look = xcb_get_property(server.xcb(), 0, window.id(), property, XCB_ATOM_ANY, 0, 0);
    const X11Reply<xcb_get_property_reply_t> head{xcb_get_property_reply(server.xcb(), look, nullptr)};
    inPieces = head != nullptr && head->type == server.atom(X11Atom::incremental);
    if (inPieces)
    {
        // This tells the other side to begin.
        xcb_delete_property(server.xcb(), window.id(), property);
        return server.flush();
    }
    finish(append());
}

void X11Transfer::readPiece()
{
    const std::size_t before = content.size();
    if (!append())
        return finish(false);
    if (content.size() == before)
        finish(true);
}

// Takes what the property holds. That the property vanishes tells the other side to write the next piece.
bool X11Transfer::append()
{
    X11Connection& server = window.connection();
    constexpr auto words = std::uint32_t(mostBytes / 4 + 1);
    const auto take = xcb_get_property(server.xcb(), 1, window.id(), property, XCB_ATOM_ANY, 0, words);
    const X11Reply<xcb_get_property_reply_t> reply{xcb_get_property_reply(server.xcb(), take, nullptr)};
    if (reply == nullptr || reply->format != 8)
        return reply != nullptr && reply->type != XCB_ATOM_NONE && reply->value_len == 0;
    const auto length = std::size_t(xcb_get_property_value_length(reply.get()));
    if (reply->bytes_after > 0 || content.size() + length > mostBytes)
        return false;
    content.append(static_cast<const char*>(xcb_get_property_value(reply.get())), length);
    return true;
}

void X11Transfer::finish(bool isWhole)
{
    const Done callback = std::exchange(done, nullptr);
    std::optional<std::string> result;
    if (isWhole)
        result = std::move(content);
    content.clear();
    callback(std::move(result)); // may be the end of this
}
}
