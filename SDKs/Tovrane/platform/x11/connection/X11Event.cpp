// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/connection/X11Event.h"

namespace Tovra
{
xcb_window_t windowOfEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    switch (type)
    {
    case XCB_KEY_PRESS: // these five have one layout
    case XCB_KEY_RELEASE:
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
    case XCB_MOTION_NOTIFY:
        return as<xcb_key_press_event_t>(event).event;
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        return as<xcb_enter_notify_event_t>(event).event;
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        return as<xcb_focus_in_event_t>(event).event;
    case XCB_EXPOSE:
        return as<xcb_expose_event_t>(event).window;
    case XCB_VISIBILITY_NOTIFY:
        return as<xcb_visibility_notify_event_t>(event).window;
    case XCB_UNMAP_NOTIFY:
        return as<xcb_unmap_notify_event_t>(event).event;
    case XCB_CONFIGURE_NOTIFY:
        return as<xcb_configure_notify_event_t>(event).event;
    case XCB_DESTROY_NOTIFY:
        return as<xcb_destroy_notify_event_t>(event).event;
    case XCB_PROPERTY_NOTIFY:
        return as<xcb_property_notify_event_t>(event).window;
    case XCB_CLIENT_MESSAGE:
        return as<xcb_client_message_event_t>(event).window;
    case XCB_SELECTION_CLEAR:
        return as<xcb_selection_clear_event_t>(event).owner;
    case XCB_SELECTION_REQUEST:
        return as<xcb_selection_request_event_t>(event).owner;
    case XCB_SELECTION_NOTIFY:
        return as<xcb_selection_notify_event_t>(event).requestor;
    default:
        return 0;
    }
}

xcb_timestamp_t timeOfEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    switch (type)
    {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
    case XCB_MOTION_NOTIFY:
        return as<xcb_key_press_event_t>(event).time;
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
        return as<xcb_enter_notify_event_t>(event).time;
    case XCB_PROPERTY_NOTIFY:
        return as<xcb_property_notify_event_t>(event).time;
    default:
        return 0;
    }
}
}
