// SPDX-License-Identifier: GPL-3.0-or-later
// Fetches what another client offers in a selection: the clipboard, or the content of a drag.
//
// The answer comes by events, so nobody waits for a client that doesn't answer. Long contents come in pieces.
// Each transfer has a property of its own, so that the late answer to an earlier one, or the pieces of one
// that was given up, never mix into it.
#pragma once

#include "Tovrane/platform/x11/connection/X11Window.h"

#include <functional>
#include <optional>
#include <string>

namespace Tovra
{
// [window thread]
class X11Transfer : private X11EventSink
{
public:
    // Gets nothing if there is no such content, or more than mostBytes of it. The callback may destroy the
    // transfer, or start it again.
    using Done = std::function<void(std::optional<std::string>)>;

    explicit X11Transfer(std::shared_ptr<X11Connection> server);

    static constexpr std::size_t mostBytes = std::size_t(4) << 20;

    // Cancels a transfer that is under way; its callback is not called any more.
    void start(xcb_atom_t selection, xcb_atom_t form, xcb_timestamp_t time, Done callback);

private:
    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    void answered(const xcb_selection_notify_event_t& event);
    void readPiece();
    bool append();
    void finish(bool isWhole);

    X11Window window;
    xcb_atom_t source = 0;
    xcb_atom_t wanted = 0;
    xcb_timestamp_t asked = 0; // of the question
    Done done;                 // null: nothing is under way
    xcb_atom_t property = 0;   // where the content comes
    unsigned int started = 0;
    bool inPieces = false;
    std::string content;
};
}
