// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/frame/X11FrameMouse.h"

#include "Tovrane/platform/x11/connection/X11Keys.h"

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

void X11FrameMouse::pressed(const xcb_button_press_event_t& event)
{
    if (overlays.lose(OverlayKind::menu) || overlays.takeInput())
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
    keys.takeFocus();
    const int count = clicks.press(event.detail, event.event_x, event.event_y, event.time);
    events.press(where, button | mouseModifiersOfState(event.state), count);
}

void X11FrameMouse::released(const xcb_button_release_event_t& event)
{
    const long button = mouseButtonOfServer(event.detail);
    if (button == 0)
        return;
    if (event.detail > lastButtonOfState)
        heldBeyondState &= ~button;
    events.release(placeOf(event.event_x, event.event_y), button | mouseModifiersOfState(event.state));
}

void X11FrameMouse::moved(int x, int y, std::uint16_t state)
{
    if (!overlays.takeInput())
        events.move(CPoint(x, y), mouseWordOfState(state) | heldBeyondState);
}

// Over the text field the mouse is still in the frame. While a button is held the server keeps sending what
// the mouse does, wherever it is, so this is no leaving; but then somebody else may have taken the mouse, or
// the host has hidden its window, which it tells nobody.
void X11FrameMouse::left(const xcb_leave_notify_event_t& event)
{
    if (overlays.has(OverlayKind::menu))
        return; // givenBack looks where the mouse is when the menu has closed
    if (event.mode != XCB_NOTIFY_MODE_NORMAL || (events.heldButtons() != 0 && !isViewable()))
        taken();
    if (event.detail != XCB_NOTIFY_DETAIL_INFERIOR && events.heldButtons() == 0)
        events.leave(placeOf(event.event_x, event.event_y), mouseModifiersOfState(event.state));
}

void X11FrameMouse::taken()
{
    heldBeyondState = 0;
    events.releaseAll();
}

// If the mouse is over the window, an EnterNotify will say so.
void X11FrameMouse::givenBack()
{
    const auto reply = ask();
    if (reply == nullptr)
        return;
    const bool isInside = reply->same_screen && reply->win_x >= 0 && reply->win_y >= 0 &&
                          reply->win_x < window.place().width && reply->win_y < window.place().height;
    heldBeyondState = 0;
    events.releaseAllBut(mouseWordOfState(reply->mask));
    if (!isInside)
        vanished();
}

void X11FrameMouse::vanished()
{
    heldBeyondState = 0;
    events.vanish();
}

X11Reply<xcb_query_pointer_reply_t> X11FrameMouse::ask() const
{
    if (window.isGone())
        return nullptr;
    const X11Connection& server = window.connection();
    return server.reply(xcb_query_pointer_reply, xcb_query_pointer(server.xcb(), window.id()));
}

// Whether neither the window nor one above it is hidden.
bool X11FrameMouse::isViewable() const
{
    const X11Connection& server = window.connection();
    const auto asked = xcb_get_window_attributes(server.xcb(), window.id());
    const auto reply = server.reply(xcb_get_window_attributes_reply, asked);
    return reply != nullptr && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}
}
