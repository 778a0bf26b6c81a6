// SPDX-License-Identifier: GPL-3.0-or-later
// Another X client: its own connection and window, with texts that it offers in selections.
#pragma once

#include "Tovrane/platform/x11/connection/X11Window.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

class OtherProgram : public Tovra::X11EventSink
{
public:
    OtherProgram()
        : server(Tovra::X11Connection::open()),
          window(std::in_place, server, static_cast<X11EventSink&>(*this), Tovra::X11Window::popUp, 0,
                 Tovra::X11Place{600, 600, 5, 5})
    {
    }

    // What it answers with, by the form that is asked for. Other questions stay open, in asked.
    std::map<std::string, std::string> content;
    std::vector<xcb_selection_request_event_t> asked;

    void own(xcb_atom_t selection)
    {
        xcb_set_selection_owner(c(), window->id(), selection, XCB_CURRENT_TIME);
        server->sync();
    }
    void write(const xcb_selection_request_event_t& to, xcb_atom_t type, int bits, const std::string& bytes)
    {
        xcb_change_property(c(), XCB_PROP_MODE_REPLACE, to.requestor, to.property, type, std::uint8_t(bits),
                            std::uint32_t(bytes.size()) / std::uint32_t(bits / 8), bytes.data());
        server->flush();
    }
    void notify(const xcb_selection_request_event_t& to)
    {
        xcb_selection_notify_event_t event{};
        event.response_type = XCB_SELECTION_NOTIFY;
        event.time = to.time;
        event.requestor = to.requestor;
        event.selection = to.selection;
        event.target = to.target;
        event.property = to.property;
        send(to.requestor, event);
    }
    // An event as a client sends it.
    template <class Event>
    void send(xcb_window_t to, const Event& event)
    {
        char bytes[32] = {};
        std::copy_n(reinterpret_cast<const char*>(&event), std::min(sizeof event, sizeof bytes), bytes);
        xcb_send_event(c(), 0, to, 0, bytes);
        server->flush();
    }
    void message(xcb_window_t to, Tovra::X11Atom type, const std::vector<std::uint32_t>& words)
    {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = to;
        event.type = server->atom(type);
        std::copy(words.begin(), words.end(), event.data.data32);
        send(to, event);
    }
    void die()
    {
        window.reset();
        server->flush();
    }

    const std::shared_ptr<Tovra::X11Connection> server;
    std::optional<Tovra::X11Window> window;

protected:
    xcb_connection_t* c() { return server->xcb(); }

    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override
    {
        if (type != XCB_SELECTION_REQUEST)
            return;
        const auto& request = Tovra::as<xcb_selection_request_event_t>(event);
        for (const auto& [form, bytes] : content)
            if (server->atomOfName(form) == request.target)
            {
                write(request, request.target, 8, bytes);
                return notify(request);
            }
        asked.push_back(request);
    }
};
