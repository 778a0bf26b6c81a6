// SPDX-License-Identifier: GPL-3.0-or-later
// What our text fields offer to other X clients: the text that was copied, and the one that was selected
// last.
//
// X stores no texts: other clients can fetch ours as long as the frame exists. X11Paste fetches theirs.
#pragma once

#include "Tovrane/platform/x11/connection/X11Window.h"

#include <array>
#include <string>

namespace Tovra
{
// [window thread]
class X11Clipboard : private X11EventSink
{
public:
    enum Which
    {
        copied,   // CLIPBOARD
        selection // PRIMARY
    };

    explicit X11Clipboard(std::shared_ptr<X11Connection> server);

    // Replaces what anybody offered before. An empty text, or one of more than 64 KiB, changes nothing.
    void offer(Which which, std::string text);

    static xcb_atom_t nameOf(const X11Connection& server, Which which);

private:
    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    void answer(const xcb_selection_request_event_t& request);
    bool write(const xcb_selection_request_event_t& request, xcb_atom_t property, const std::string& text);
    std::string* offeredUnder(xcb_atom_t name);

    X11Window window;
    std::array<std::string, 2> offered;
    std::array<bool, 2> isOurs{};
    std::array<xcb_timestamp_t, 2> since{};
};
}
