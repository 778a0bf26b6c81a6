// SPDX-License-Identifier: GPL-3.0-or-later
// The mouse over a frame's window, on its way to the views.
//
// What is pressed is released in the end, whatever happens to the mouse: another program takes it, the window
// is hidden, a menu opens. While a menu or a panel is open, the views get no presses and no moves.
#pragma once

#include "Tovrane/platform/parts/ClickCounter.h"
#include "Tovrane/platform/parts/FrameOverlays.h"
#include "Tovrane/platform/parts/WindowEvents.h"
#include "Tovrane/platform/x11/frame/X11FrameKeys.h"

namespace Tovra
{
// [window thread]  The caller keeps the frame alive while an event is handled.
class X11FrameMouse
{
public:
    // All of these have to outlive it. A click takes the focus for keys.
    X11FrameMouse(X11Window& over, WindowEvents& target, FrameOverlays& above, X11FrameKeys& forKeys)
        : window(over), events(target), overlays(above), keys(forKeys)
    {
    }

    void pressed(const xcb_button_press_event_t& event);
    // Also while a panel is open: the press may have come before it.
    void released(const xcb_button_release_event_t& event);
    void moved(int x, int y, std::uint16_t state);
    void left(const xcb_leave_notify_event_t& event);

    // Somebody else has the mouse now: what is held is released.
    void taken();
    // A menu that had the mouse has closed.
    void givenBack();
    // The window cannot be seen any more.
    void vanished();

    // Where the mouse is and what it holds, as the server has it; null if the window has gone.
    X11Reply<xcb_query_pointer_reply_t> ask() const;

private:
    bool isViewable() const;

    X11Window& window;
    WindowEvents& events;
    FrameOverlays& overlays;
    X11FrameKeys& keys;
    ClickCounter clicks;
    long heldBeyondState = 0; // buttons that are held and that the state of an event has no bit for
};
}
