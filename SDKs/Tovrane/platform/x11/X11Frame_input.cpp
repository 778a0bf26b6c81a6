// SPDX-License-Identifier: GPL-3.0-or-later
// The events of a frame's window, and the mouse on its way to the views.
#include "Tovrane/platform/x11/X11Frame.h"
#include "Tovrane/platform/x11/X11Keys.h"
#include "Tovrane/platform/x11/X11OptionMenu.h"

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

void X11Frame::pressed(const xcb_button_press_event_t& event)
{
    if (menu != nullptr)
        return menu->cancel(); // which takes the click, as one beside it
    if (isBlocked)
        return;
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
    if (!isBlocked)
        events.move(CPoint(x, y), mouseWordOfState(state) | heldBeyondState);
}

// Over the text field the mouse is still in the frame. While a button is held the server keeps sending what
// the mouse does, wherever it is, so this is no leaving; but then somebody else may have taken the mouse, or
// the host has hidden its window, which it tells nobody.
void X11Frame::left(const xcb_leave_notify_event_t& event)
{
    if (menu != nullptr)
        return; // mouseCameBack looks where the mouse is when it has closed
    if (event.mode != XCB_NOTIFY_MODE_NORMAL || (events.heldButtons() != 0 && !isViewable()))
        releaseMouse();
    if (event.detail != XCB_NOTIFY_DETAIL_INFERIOR && events.heldButtons() == 0)
        events.leave(placeOf(event.event_x, event.event_y), mouseModifiersOfState(event.state));
}

void X11Frame::releaseMouse()
{
    heldBeyondState = 0;
    events.releaseAll();
}

void X11Frame::hidden()
{
    if (menu != nullptr)
        menu->cancel();
    heldBeyondState = 0;
    events.vanish();
}

// From a menu, which took it for itself. If the mouse is over the frame, an EnterNotify will say so.
void X11Frame::mouseCameBack()
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
}
