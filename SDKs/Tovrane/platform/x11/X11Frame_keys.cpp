// SPDX-License-Identifier: GPL-3.0-or-later
// The keys of a frame's window on their way to a text field, the views or the host, and the focus.
#include "Tovrane/platform/x11/X11Frame.h"
#include "Tovrane/platform/x11/X11OptionMenu.h"
#include "Tovrane/platform/x11/X11TextEdit.h"

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

void X11Frame::takeFocus()
{
    if (embedder != 0)
        sendToEmbedder(requestFocus);
    else
        window.takeFocus();
}

void X11Frame::handleKey(std::uint8_t type, const xcb_generic_event_t& event)
{
    const auto& key = as<xcb_key_press_event_t>(event);
    if (type == XCB_KEY_PRESS)
        keys.press(key.detail, keyPressed(key));
    else
        keyReleased(key);
}

KeyTaker X11Frame::keyPressed(const xcb_key_press_event_t& event)
{
    const X11Keyboard::Stroke stroke = server->keyboard().press(event.detail, event.state);
    if (menu != nullptr)
        menu->keyPressed(stroke.code);
    if (menu != nullptr || isBlocked || stroke.pending)
        return KeyTaker::swallowed;
    X11TextEdit* const field = activeTextEdit();
    if ((field != nullptr && field->keyDown(stroke.code, stroke.text) == kKeyConsumed) ||
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

void X11Frame::keyReleased(const xcb_key_release_event_t& event)
{
    const KeyTaker taker = keys.release(event.detail);
    if (taker == KeyTaker::swallowed)
        return;
    events.keyUp(server->keyboard().release(event.detail, event.state));
    if (taker != KeyTaker::views)
        passOn(event);
}

// A key that the host sent to us does not go back to it: it would come round again for ever.
void X11Frame::passOn(const xcb_key_press_event_t& event)
{
    if (window.isGone() || wasSent(reinterpret_cast<const xcb_generic_event_t&>(event)))
        return;
    xcb_key_press_event_t passed = event;
    passed.event = parent;
    const bool isPress = event.response_type == XCB_KEY_PRESS;
    xcb_send_event(server->xcb(), 1, parent, isPress ? XCB_EVENT_MASK_KEY_PRESS : XCB_EVENT_MASK_KEY_RELEASE,
                   reinterpret_cast<const char*>(&passed));
    server->flush();
}

void X11Frame::message(const xcb_client_message_event_t& event)
{
    if (dropTarget.handleMessage(event) || event.type != server->atom(X11Atom::xembed))
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
        return setFocused(false);
    default:
        return;
    }
}

void X11Frame::sendToEmbedder(std::uint32_t request)
{
    xcb_client_message_event_t sent{};
    sent.response_type = XCB_CLIENT_MESSAGE;
    sent.format = 32;
    sent.window = embedder;
    sent.type = server->atom(X11Atom::xembed);
    sent.data.data32[0] = server->lastTime();
    sent.data.data32[1] = request;
    xcb_send_event(server->xcb(), 0, embedder, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&sent));
    server->flush();
}

void X11Frame::setFocused(bool focused)
{
    isFocused = focused;
    if (!focused)
    {
        server->keyboard().resetSequence();
        keys.clear();
    }
    if (X11TextEdit* const field = activeTextEdit())
        field->setFocused(focused);
}
}
