// SPDX-License-Identifier: GPL-3.0-or-later
// What a key of the server's keyboard types, with the user's layout, dead keys and compose sequences.
//
// An input method (X11InputMethod) sees the keys of text fields before this class does.
#pragma once

#include "Tovrane/window/TovraKeyCode.h"

#include <cstdint>
#include <memory>
#include <string>
#include <xcb/xproto.h>

struct xkb_compose_state;
struct xkb_context;
struct xkb_keymap;
struct xkb_state;

namespace Tovra
{
// [window thread]
class X11Keyboard
{
public:
    explicit X11Keyboard(xcb_connection_t* server);
    ~X11Keyboard();
    X11Keyboard(const X11Keyboard&) = delete;
    X11Keyboard& operator=(const X11Keyboard&) = delete;

    struct Stroke
    {
        TovraKeyCode code;
        std::string text;     // what it types, UTF-8; nothing for a key that does not print
        bool pending = false; // part of an unfinished sequence: nobody else gets the key
    };
    // keycode and state as an event has them.
    Stroke press(std::uint8_t keycode, std::uint16_t state);
    TovraKeyCode release(std::uint8_t keycode, std::uint16_t state);
    // Drops a sequence that was begun: the focus has gone elsewhere.
    void resetSequence();

    // The type of the keyboard's own events, 0 for none.
    std::uint8_t eventType() const { return xkbEvents; }
    void handleEvent(const xcb_generic_event_t& event);

private:
    struct Release
    {
        void operator()(xkb_context* p) const;
        void operator()(xkb_keymap* p) const;
        void operator()(xkb_state* p) const;
        void operator()(xkb_compose_state* p) const;
    };

    void listen();
    void loadKeymap();
    void loadSequences();
    std::uint32_t symbolOf(std::uint8_t keycode, std::uint16_t eventState);

    xcb_connection_t* const connection;
    std::uint8_t xkbEvents = 0;
    std::int32_t device = -1;
    std::unique_ptr<xkb_context, Release> context;
    std::unique_ptr<xkb_keymap, Release> keymap;
    std::unique_ptr<xkb_state, Release> state;
    std::unique_ptr<xkb_compose_state, Release> sequence; // null if the locale has none
};
}
