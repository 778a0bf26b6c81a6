// SPDX-License-Identifier: GPL-3.0-or-later
// What other programs drag over a frame's window: a text or files.
//
// The content is fetched when the drag first moves over the window, so that views can look at it before the
// drop. Nothing waits for a source that answers slowly or dies.
#pragma once

#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/parts/WindowEvents.h"
#include "Tovrane/platform/x11/exchange/X11Transfer.h"
#include "Tovrane/window/CDragContainer.h"

#include <vector>

namespace Tovra
{
// [window thread]
class X11Drop : private X11EventSink
{
public:
    // All three have to outlive it; the owner is kept while a view is called.
    X11Drop(CBaseObject& owner, const X11Window& window, WindowEvents& events);
    ~X11Drop() override;

    // Tells other programs that the window takes drops.
    void announce();
    // False if the message is no part of a drag.
    bool handleMessage(const xcb_client_message_event_t& message);
    // The window has gone: the views are told that a drag over it has left.
    void leave();

private:
    enum State
    {
        idle,
        entered,  // nothing asked yet
        fetching, // asked for the content
        over,     // the views know of it
        refused   // nothing that we can use
    };

    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    bool mayDrag(xcb_window_t from) const;
    void enter(const xcb_client_message_event_t& message);
    void position(const xcb_client_message_event_t& message);
    void drop(const xcb_client_message_event_t& message);
    void finishDrop();
    void end();

    bool offers(X11Atom form) const;
    xcb_atom_t formOfText() const;
    void fetch(xcb_timestamp_t time);
    void fetchText(xcb_timestamp_t time);
    void gotFiles(const std::optional<std::string>& list, xcb_timestamp_t time);
    void gotText(const std::optional<std::string>& text);
    void gotContent(CDropContent* fetched);
    void placeAt(int rootX, int rootY);
    void watchSource(bool watched);
    void send(X11Atom message, std::uint32_t flags, xcb_atom_t action);

    CBaseObject& owner;
    const X11Window& window;
    WindowEvents& events;
    X11Transfer transfer;
    State state = idle;
    bool isDropped = false; // while the content is still on its way
    xcb_window_t source = 0;
    std::vector<xcb_atom_t> forms;
    std::vector<std::string> paths;
    Kept<CDropContent> content;
    CPoint where;
};
}
