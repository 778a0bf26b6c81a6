// SPDX-License-Identifier: GPL-3.0-or-later
// The events of a frame's window, the mouse on its way to the views, and the keys on theirs to a text field,
// the views or the host.
#include "Tovrane/platform/x11/X11Frame.h"
#include "Tovrane/platform/x11/X11Keys.h"

namespace Tovra
{
namespace
{
// The wheel's buttons, as steps to the right and up.
struct WheelRow
{
    std::uint8_t onServer;
    double x;
    double y;
};
constexpr WheelRow wheel[] = {{4, 0.0, 1.0}, {5, 0.0, -1.0}, {6, -1.0, 0.0}, {7, 1.0, 0.0}};

// The state word of the server's events knows the first five buttons alone.
constexpr std::uint8_t lastButtonOfState = 5;

CPoint placeOf(std::int16_t x, std::int16_t y)
{
    return CPoint(x, y);
}
}

void X11Frame::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    const Kept<X11Frame> alive(this);
    switch (type)
    {
    case XCB_DESTROY_NOTIFY:
        return windowGone();
    case XCB_UNMAP_NOTIFY:
        return hidden();
    case XCB_EXPOSE:
    {
        const auto& part = as<xcb_expose_event_t>(event);
        return surface.showAgain(window, {part.x, part.y, part.width, part.height});
    }
    case XCB_BUTTON_PRESS:
        return pressed(as<xcb_button_press_event_t>(event));
    case XCB_BUTTON_RELEASE:
        return released(as<xcb_button_release_event_t>(event));
    case XCB_MOTION_NOTIFY:
    {
        const auto& motion = as<xcb_motion_notify_event_t>(event);
        return moved(motion.event_x, motion.event_y, motion.state);
    }
    case XCB_ENTER_NOTIFY: // a move need not follow: the window came to the mouse, or a menu closed over it
    {
        const auto& entered = as<xcb_enter_notify_event_t>(event);
        return moved(entered.event_x, entered.event_y, entered.state);
    }
    case XCB_LEAVE_NOTIFY:
        return left(as<xcb_leave_notify_event_t>(event));
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
        return handleKey(type, event);
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        return focusMoved(type == XCB_FOCUS_IN, as<xcb_focus_in_event_t>(event));
    case XCB_CLIENT_MESSAGE:
        return message(as<xcb_client_message_event_t>(event));
    default:
        return;
    }
}

void X11Frame::pressed(const xcb_button_press_event_t& event)
{
    if (open.lose(OverlayKind::menu) || open.takeInput())
        return; // a menu takes the click as one beside it
    const CPoint where = placeOf(event.event_x, event.event_y);
    for (const WheelRow& row : wheel)
        if (row.onServer == event.detail)
        {
            events.wheel(where, row.x, row.y, mouseWordOfState(event.state));
            return;
        }
    const long button = mouseButtonOfServer(event.detail);
    if (button == 0)
        return;
    if (event.detail > lastButtonOfState)
        heldBeyondState |= button;
    takeFocus();
    const int count = clicks.press(event.detail, event.event_x, event.event_y, event.time);
    events.press(where, button | mouseModifiersOfState(event.state), count);
}

// Also while a panel is open: the press came before it.
void X11Frame::released(const xcb_button_release_event_t& event)
{
    const long button = mouseButtonOfServer(event.detail);
    if (button == 0)
        return;
    if (event.detail > lastButtonOfState)
        heldBeyondState &= ~button;
    events.release(placeOf(event.event_x, event.event_y), button | mouseModifiersOfState(event.state));
}

void X11Frame::moved(int x, int y, std::uint16_t state)
{
    if (!open.takeInput())
        events.move(CPoint(x, y), mouseWordOfState(state) | heldBeyondState);
}

// Over the text field the mouse is still in the frame. While a button is held the server keeps sending what
// the mouse does, wherever it is, so this is no leaving; but then somebody else may have taken the mouse, or
// the host has hidden its window, which it tells nobody.
void X11Frame::left(const xcb_leave_notify_event_t& event)
{
    if (open.has(OverlayKind::menu))
        return; // mouseGivenBack looks where the mouse is when it has closed
    if (event.mode != XCB_NOTIFY_MODE_NORMAL || (events.heldButtons() != 0 && !isViewable()))
        mouseTaken();
    if (event.detail != XCB_NOTIFY_DETAIL_INFERIOR && events.heldButtons() == 0)
        events.leave(placeOf(event.event_x, event.event_y), mouseModifiersOfState(event.state));
}

void X11Frame::releaseMouse()
{
    open.lose(OverlayKind::menu);
    mouseTaken();
}

void X11Frame::mouseTaken()
{
    heldBeyondState = 0;
    events.releaseAll();
}

void X11Frame::hidden()
{
    open.lose(OverlayKind::menu);
    heldBeyondState = 0;
    events.vanish();
}

void X11Frame::mouseGivenBack()
{
    const auto reply = pointer();
    if (reply == nullptr)
        return;
    const bool isInside = reply->same_screen && reply->win_x >= 0 && reply->win_y >= 0 &&
                          reply->win_x < window.place().width && reply->win_y < window.place().height;
    heldBeyondState = 0;
    events.releaseAllBut(mouseWordOfState(reply->mask));
    if (!isInside)
        hidden();
}

// Keys, and the focus.

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
    if (open.takeInput())
    {
        open.keyDown(stroke.code, stroke.text);
        return KeyTaker::swallowed;
    }
    if (stroke.pending)
        return KeyTaker::swallowed;
    if (open.keyDown(stroke.code, stroke.text) == kKeyConsumed || events.keyDown(stroke.code) == kKeyConsumed)
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
        setFocused(false);
        open.lose(OverlayKind::menu);
        return;
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

// A grab, our own menu's among them, moves the focus for its time only. A host that takes the focus from us
// may do so a moment after the click that opened a menu; the focus of another window is the end of a menu.
void X11Frame::focusMoved(bool isHere, const xcb_focus_in_event_t& event)
{
    if (event.mode != XCB_NOTIFY_MODE_NORMAL && event.mode != XCB_NOTIFY_MODE_WHILE_GRABBED)
        return;
    setFocused(isHere);
    const bool isElsewhere =
        event.detail == XCB_NOTIFY_DETAIL_NONLINEAR || event.detail == XCB_NOTIFY_DETAIL_NONLINEAR_VIRTUAL;
    if (!isHere && isElsewhere)
        open.lose(OverlayKind::menu);
}

void X11Frame::setFocused(bool focused)
{
    if (!focused)
    {
        server->keyboard().resetSequence();
        keys.clear();
    }
    open.setFocused(focused);
}
}
