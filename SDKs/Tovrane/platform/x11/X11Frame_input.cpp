// The events of a frame's window, on their way to the views.
#include "Tovrane/platform/x11/X11Frame.h"
#include "Tovrane/platform/x11/X11Keys.h"
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

// The wheel's buttons, as steps to the right and up.
struct WheelRow
{
    std::uint8_t onServer;
    double x;
    double y;
};
constexpr WheelRow wheel[] = {{4, 0.0, 1.0}, {5, 0.0, -1.0}, {6, -1.0, 0.0}, {7, 1.0, 0.0}};

CPoint placeOf(std::int16_t x, std::int16_t y)
{
    return CPoint(x, y);
}
}

void X11Frame::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    const Kept<X11Frame> alive(this);
    const bool isInput = type >= XCB_KEY_PRESS && type <= XCB_MOTION_NOTIFY;
    if (isInput && isBlocked)
        return;
    switch (type)
    {
    case XCB_DESTROY_NOTIFY:
        return windowGone();
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
        return moved(as<xcb_motion_notify_event_t>(event));
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
        return handleKey(type, event);
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        if (const auto mode = as<xcb_focus_in_event_t>(event).mode;
            mode == XCB_NOTIFY_MODE_NORMAL || mode == XCB_NOTIFY_MODE_WHILE_GRABBED)
            setFocused(type == XCB_FOCUS_IN);
        return;
    case XCB_CLIENT_MESSAGE:
        return message(as<xcb_client_message_event_t>(event));
    default:
        return;
    }
}

void X11Frame::takeFocus()
{
    if (embedder != 0)
        sendToEmbedder(requestFocus);
    else
        window.takeFocus();
}

void X11Frame::pressed(const xcb_button_press_event_t& event)
{
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
    takeFocus();
    const int count = clicks.press(event.detail, event.event_x, event.event_y, event.time);
    events.press(where, button | mouseModifiersOfState(event.state), count);
}

void X11Frame::released(const xcb_button_release_event_t& event)
{
    if (const long button = mouseButtonOfServer(event.detail))
        events.release(placeOf(event.event_x, event.event_y), button | mouseModifiersOfState(event.state));
}

void X11Frame::moved(const xcb_motion_notify_event_t& event)
{
    events.move(placeOf(event.event_x, event.event_y), mouseWordOfState(event.state));
}

void X11Frame::handleKey(std::uint8_t type, const xcb_generic_event_t& event)
{
    const auto& key = as<xcb_key_press_event_t>(event);
    if (type == XCB_KEY_PRESS)
        keyPressed(key);
    else if (events.keyUp(server->keyboard().release(key.detail, key.state)) != kKeyConsumed)
        passOn(key);
}

void X11Frame::keyPressed(const xcb_key_press_event_t& event)
{
    const X11Keyboard::Stroke stroke = server->keyboard().press(event.detail, event.state);
    X11TextEdit* const field = activeTextEdit();
    if (stroke.pending || (field != nullptr && field->keyDown(stroke.code, stroke.text) == kKeyConsumed) ||
        events.keyDown(stroke.code) == kKeyConsumed)
        return;
    if (stroke.code.virtualKey == kVirtualTab && embedder != 0)
        sendToEmbedder(stroke.code.modifiers & kKeyShift ? focusPrevious : focusNext);
    else
        passOn(event);
}

// Not what a host has handed to us: it would get that back for ever.
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
        embedder = event.data.data32[3];
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
        server->keyboard().resetSequence();
    if (X11TextEdit* const field = activeTextEdit())
        field->setFocused(focused);
}
}
