// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/exchange/X11Drop.h"

#include "CORE/Utf8.h"
#include "Tovrane/platform/parts/UriList.h"

#include <algorithm>

namespace Tovra
{
namespace
{
constexpr std::uint32_t protocolVersion = 5;
constexpr std::uint32_t mostForms = 256;
constexpr std::uint32_t acceptsWithAllMoves = 3;
}

X11Drop::X11Drop(CBaseObject& kept, const X11Window& target, WindowEvents& windowEvents)
    : owner(kept), window(target), events(windowEvents), transfer(target.sharedConnection())
{
}

X11Drop::~X11Drop()
{
    watchSource(false);
}

void X11Drop::announce()
{
    X11Connection& server = window.connection();
    xcb_change_property(server.xcb(), XCB_PROP_MODE_REPLACE, window.id(), server.atom(X11Atom::dndAware),
                        XCB_ATOM_ATOM, 32, 1, &protocolVersion);
}

bool X11Drop::handleMessage(const xcb_client_message_event_t& message)
{
    const X11Connection& server = window.connection();
    const auto is = [&](X11Atom name) { return message.type == server.atom(name); };
    if (message.format != 32)
        return false;
    if (is(X11Atom::dndEnter))
    {
        if (mayDrag(message.data.data32[0]))
            enter(message);
        return true;
    }
    if (!is(X11Atom::dndPosition) && !is(X11Atom::dndLeave) && !is(X11Atom::dndDrop))
        return false;
    if (state == idle || message.data.data32[0] != source)
        return true; // of a drag that never entered
    if (is(X11Atom::dndPosition))
        position(message);
    else if (is(X11Atom::dndLeave))
        leave();
    else
        drop(message);
    return true;
}

// To see the source die we listen to its window. One of our own has a listener already, which would be lost;
// and a root window is no source.
bool X11Drop::mayDrag(xcb_window_t from) const
{
    const X11Connection& server = window.connection();
    return from != XCB_NONE && !server.isOurs(from) && !server.isRoot(from);
}

// The source dies in the middle of a drag.
void X11Drop::handleEvent(std::uint8_t type, const xcb_generic_event_t&)
{
    const Kept<CBaseObject> alive(&owner);
    if (type == XCB_DESTROY_NOTIFY)
        leave();
}

void X11Drop::watchSource(bool watched)
{
    if (source == 0)
        return;
    X11Connection& server = window.connection();
    const std::uint32_t mask = watched ? XCB_EVENT_MASK_STRUCTURE_NOTIFY : XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(server.xcb(), source, XCB_CW_EVENT_MASK, &mask);
    if (watched)
        server.watchWindow(source, *this);
    else
        server.forgetWindow(source);
}

void X11Drop::enter(const xcb_client_message_event_t& message)
{
    leave();
    X11Connection& server = window.connection();
    const std::uint32_t* data = message.data.data32;
    source = data[0];
    state = entered;
    watchSource(true);
    forms.assign(data + 2, data + 5);
    if ((data[1] & 1) == 0)
        return;
    const auto asked = xcb_get_property(server.xcb(), 0, source, server.atom(X11Atom::dndTypeList),
                                        XCB_ATOM_ATOM, 0, mostForms);
    const X11Reply<xcb_get_property_reply_t> reply{xcb_get_property_reply(server.xcb(), asked, nullptr)};
    if (reply == nullptr || reply->format != 32)
        return;
    const auto* listed = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    forms.assign(listed, listed + reply->value_len);
}

void X11Drop::position(const xcb_client_message_event_t& message)
{
    const std::uint32_t* data = message.data.data32;
    placeAt(int(data[2] >> 16), int(data[2] & 0xffff));
    if (state == entered)
        fetch(data[3]);
    else if (state == over)
        events.dragMove(Kept<CDropContent>(content).get(), where);
    const bool accepts = state == fetching || state == over;
    send(X11Atom::dndStatus, accepts ? acceptsWithAllMoves : 0,
         accepts ? window.connection().atom(X11Atom::dndActionCopy) : xcb_atom_t(XCB_ATOM_NONE));
}

void X11Drop::placeAt(int rootX, int rootY)
{
    X11Connection& server = window.connection();
    const auto asked = xcb_translate_coordinates(server.xcb(), server.screen().root, window.id(),
                                                 std::int16_t(rootX), std::int16_t(rootY));
    if (const X11Reply<xcb_translate_coordinates_reply_t> reply{
            xcb_translate_coordinates_reply(server.xcb(), asked, nullptr)})
        where = CPoint(reply->dst_x, reply->dst_y);
}

void X11Drop::leave()
{
    const bool wasOver = state == over;
    const Kept<CDropContent> left(content.get());
    end();
    if (wasOver)
        events.dragLeave(left.get(), where);
}

void X11Drop::end()
{
    watchSource(false);
    source = 0;
    state = idle;
    isDropped = false;
    forms.clear();
    paths.clear();
    content.reset();
}

void X11Drop::drop(const xcb_client_message_event_t& message)
{
    if (state == entered)
        fetch(message.data.data32[2]); // a source that never said where it is
    isDropped = true;
    if (state != fetching)
        finishDrop();
}

void X11Drop::finishDrop()
{
    const Kept<CBaseObject> alive(&owner);
    const Kept<CDropContent> dropped = content;
    const bool isTaken = state == over && events.drop(dropped.get(), where);
    if (!window.isGone())
        send(X11Atom::dndFinished, isTaken ? 1 : 0,
             isTaken ? window.connection().atom(X11Atom::dndActionCopy) : xcb_atom_t(XCB_ATOM_NONE));
    end();
}

bool X11Drop::offers(X11Atom form) const
{
    return std::find(forms.begin(), forms.end(), window.connection().atom(form)) != forms.end();
}

xcb_atom_t X11Drop::formOfText() const
{
    for (const X11Atom form : {X11Atom::utf8String, X11Atom::textUtf8, X11Atom::textPlain})
        if (offers(form))
            return window.connection().atom(form);
    return XCB_ATOM_NONE;
}

void X11Drop::fetch(xcb_timestamp_t time)
{
    state = fetching;
    if (!offers(X11Atom::uriList))
        return fetchText(time);
    X11Connection& server = window.connection();
    transfer.start(server.atom(X11Atom::dndSelection), server.atom(X11Atom::uriList), time,
                   [this, time](const std::optional<std::string>& list) { gotFiles(list, time); });
}

void X11Drop::fetchText(xcb_timestamp_t time)
{
    const xcb_atom_t form = formOfText();
    if (form == XCB_ATOM_NONE)
        return gotText(std::nullopt);
    transfer.start(window.connection().atom(X11Atom::dndSelection), form, time,
                   [this](const std::optional<std::string>& text) { gotText(text); });
}

void X11Drop::gotFiles(const std::optional<std::string>& list, xcb_timestamp_t time)
{
    if (state != fetching)
        return;
    if (list)
        paths = pathsOfUriList(*list);
    fetchText(time);
}

// A text counts more than files, but not one that only names the same files, as file managers offer it.
void X11Drop::gotText(const std::optional<std::string>& text)
{
    if (state != fetching)
        return;
    if (text && !(paths.empty() ? text->empty() : restatesFiles(*text, paths)))
        return gotContent(new CDropContent(Core::Utf8::removeInvalid(*text), {}));
    gotContent(paths.empty() ? nullptr : new CDropContent({}, paths));
}

void X11Drop::gotContent(CDropContent* fetched)
{
    const Kept<CBaseObject> alive(&owner);
    const Kept<CDropContent> entering = Kept<CDropContent>::adopt(fetched); // the call may end the drag
    content = entering;
    state = fetched != nullptr ? over : refused;
    if (state == over)
        events.dragEnter(fetched, where);
    if (isDropped)
        finishDrop();
}

void X11Drop::send(X11Atom name, std::uint32_t flags, xcb_atom_t action)
{
    if (source == 0)
        return; // the drag has ended meanwhile
    X11Connection& server = window.connection();
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = source;
    message.type = server.atom(name);
    message.data.data32[0] = window.id();
    message.data.data32[1] = flags;
    // A finished drop names the action third; a status has an empty rectangle there and names it last.
    message.data.data32[name == X11Atom::dndFinished ? 2 : 4] = action;
    xcb_send_event(server.xcb(), 0, source, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
    server.flush();
}
}
