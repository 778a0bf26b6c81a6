// SPDX-License-Identifier: GPL-3.0-or-later
// The keyboard of a frame's window: its focus, and each key on its way to what lies over the frame, to the
// views, or back to the host.
//
// If the host speaks XEmbed, it decides about the focus; if not, a click takes it. A key that nobody wants
// goes on to the host's window, press and release alike.
#pragma once

#include "Tovrane/platform/parts/FrameOverlays.h"
#include "Tovrane/platform/parts/HeldKeys.h"
#include "Tovrane/platform/parts/WindowEvents.h"
#include "Tovrane/platform/x11/connection/X11Window.h"

namespace Tovra
{
// [window thread]  The caller keeps the frame alive while an event is handled.
class X11FrameKeys
{
public:
    // All but the host's window have to outlive it.
    X11FrameKeys(X11Window& of, xcb_window_t host, WindowEvents& target, FrameOverlays& above)
        : window(of), parent(host), events(target), overlays(above)
    {
    }

    void takeFocus();
    // A KeyPress or KeyRelease.
    void handleKey(std::uint8_t type, const xcb_generic_event_t& event);
    // An overlay took the press of this key: its release goes to nobody.
    void swallow(std::uint8_t key) { keys.press(key, KeyTaker::swallowed); }
    // A FocusIn or FocusOut.
    void focusMoved(bool isHere, const xcb_focus_in_event_t& event);
    // A message of XEmbed.
    void message(const xcb_client_message_event_t& event);

private:
    KeyTaker pressed(const xcb_key_press_event_t& event);
    void released(const xcb_key_release_event_t& event);
    void passOn(const xcb_key_press_event_t& event);
    void sendToEmbedder(std::uint32_t request);
    void setFocused(bool focused);

    X11Window& window;
    const xcb_window_t parent;
    WindowEvents& events;
    FrameOverlays& overlays;
    HeldKeys keys;
    xcb_window_t embedder = 0; // the parent, once it has spoken XEmbed
};
}
