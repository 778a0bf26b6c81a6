// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/frame/X11FrameKeys.h"

namespace Tovra
{
namespace
{
enum XEmbed : std::uint32_t
{
    embeddedNotify = 0,
    requestFocus = 3,
    focusIn = 4,
    focusOut = 5,
    focusNext = 6,
    focusPrevious = 7
};
}

void X11FrameKeys::takeFocus()
{
    if (embedder != 0)
        sendToEmbedder(requestFocus);
    else
        window.takeFocus();
}

void X11FrameKeys::handleKey(std::uint8_t type, const xcb_generic_event_t& event)
{
    const auto& key = as<xcb_key_press_event_t>(event);
    if (type == XCB_KEY_PRESS)
        keys.press(key.detail, pressed(key));
    else
        released(key);
}

KeyTaker X11FrameKeys::pressed(const xcb_key_press_event_t& event)
{
    const X11Keyboard::Stroke stroke = window.connection().keyboard().press(event.detail, event.state);
    if (overlays.takeInput())
    {
        overlays.keyDown(stroke.code, stroke.text);
        return KeyTaker::swallowed;
    }
    if (stroke.pending)
        return KeyTaker::swallowed;
    if (overlays.keyDown(stroke.code, stroke.text) == kKeyConsumed ||
        events.keyDown(stroke.code) == kKeyConsumed)
        return KeyTaker::views;
    if (stroke.code.virtualKey == kVirtualTab && embedder != 0)
    {
        sendToEmbedder(stroke.code.modifiers & kKeyShift ? focusPrevious : focusNext);
        return KeyTaker::views;
    }
    passOn(event);
    return KeyTaker::host;
}

void X11FrameKeys::released(const xcb_key_release_event_t& event)
{
    const KeyTaker taker = keys.release(event.detail);
    if (taker == KeyTaker::swallowed)
        return;
    events.keyUp(window.connection().keyboard().release(event.detail, event.state));
    if (taker != KeyTaker::views)
        passOn(event);
}

// A key that the host sent to us does not go back to it: it would come round again for ever.
void X11FrameKeys::passOn(const xcb_key_press_event_t& event)
{
    X11Connection& server = window.connection();
    if (window.isGone() || wasSent(reinterpret_cast<const xcb_generic_event_t&>(event)))
        return;
    xcb_key_press_event_t passed = event;
    passed.event = parent;
    const bool isPress = event.response_type == XCB_KEY_PRESS;
    xcb_send_event(server.xcb(), 1, parent, isPress ? XCB_EVENT_MASK_KEY_PRESS : XCB_EVENT_MASK_KEY_RELEASE,
                   reinterpret_cast<const char*>(&passed));
    server.flush();
}

void X11FrameKeys::message(const xcb_client_message_event_t& event)
{
    if (event.type != window.connection().atom(X11Atom::xembed))
        return;
    switch (event.data.data32[1])
    {
    case embeddedNotify:
        if (event.data.data32[3] == parent) // anybody can send this, and keys would go astray
            embedder = parent;
        return;
    case focusIn:
        return setFocused(true);
    case focusOut:
        setFocused(false);
        overlays.lose(OverlayKind::menu);
        return;
    default:
        return;
    }
}

void X11FrameKeys::sendToEmbedder(std::uint32_t request)
{
    X11Connection& server = window.connection();
    xcb_client_message_event_t sent{};
    sent.response_type = XCB_CLIENT_MESSAGE;
    sent.format = 32;
    sent.window = embedder;
    sent.type = server.atom(X11Atom::xembed);
    sent.data.data32[0] = server.lastTime();
    sent.data.data32[1] = request;
    xcb_send_event(server.xcb(), 0, embedder, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&sent));
    server.flush();
}

// A grab, our own menu's among them, moves the focus for its time only. A host that takes the focus from us
// may do so a moment after the click that opened a menu; the focus of another window is the end of a menu.
void X11FrameKeys::focusMoved(bool isHere, const xcb_focus_in_event_t& event)
{
    if (event.mode != XCB_NOTIFY_MODE_NORMAL && event.mode != XCB_NOTIFY_MODE_WHILE_GRABBED)
        return;
    setFocused(isHere);
    const bool isElsewhere =
        event.detail == XCB_NOTIFY_DETAIL_NONLINEAR || event.detail == XCB_NOTIFY_DETAIL_NONLINEAR_VIRTUAL;
    if (!isHere && isElsewhere)
        overlays.lose(OverlayKind::menu);
}

void X11FrameKeys::setFocused(bool focused)
{
    if (!focused)
    {
        window.connection().keyboard().resetSequence();
        keys.clear();
    }
    overlays.setFocused(focused);
}
}
