// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/connection/X11Window.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
namespace
{
constexpr std::uint32_t drawnEvents =
    XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS |
    XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_ENTER_WINDOW |
    XCB_EVENT_MASK_LEAVE_WINDOW | XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
    XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_VISIBILITY_CHANGE;

// A size or place from outside, NaN among them, within what X has room for.
int bounded16(double value, double lowest)
{
    return std::isnan(value) ? int(lowest) : int(std::clamp(std::floor(value + 0.5), lowest, 32767.0));
}

X11Place boundedByServer(const X11Place& place)
{
    return X11Window::bounded(place.x, place.y, place.width, place.height);
}
}

X11Place X11Window::bounded(double x, double y, double width, double height)
{
    return {bounded16(x, -32768.0), bounded16(y, -32768.0), bounded16(width, 1.0), bounded16(height, 1.0)};
}

X11Window::X11Window(std::shared_ptr<X11Connection> connected, X11EventSink& events, Kind kind,
                     xcb_window_t parent, const X11Place& place)
    : server(std::move(connected)), sink(events), where(boundedByServer(place))
{
    xcb_connection_t* c = server->xcb();
    const xcb_window_t made = xcb_generate_id(c);
    const bool isDrawn = kind != hidden;
    const std::uint32_t black = server->depth() == 32 ? 0xff000000u : 0u; // not a clear one
    const std::uint32_t drawn[] = {black,         black,       XCB_GRAVITY_NORTH_WEST,
                                   kind == popUp, drawnEvents, server->colormap()};
    constexpr std::uint32_t drawnMask = XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY |
                                        XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    const std::uint32_t bare[] = {XCB_EVENT_MASK_PROPERTY_CHANGE};
    const auto asked = xcb_create_window_checked(
        c, isDrawn ? server->depth() : std::uint8_t(0), made, parent != 0 ? parent : server->screen().root,
        std::int16_t(where.x), std::int16_t(where.y), std::uint16_t(where.width), std::uint16_t(where.height),
        0, isDrawn ? XCB_WINDOW_CLASS_INPUT_OUTPUT : XCB_WINDOW_CLASS_INPUT_ONLY,
        isDrawn ? server->visual() : xcb_visualid_t(XCB_COPY_FROM_PARENT),
        isDrawn ? drawnMask : std::uint32_t(XCB_CW_EVENT_MASK), isDrawn ? drawn : bare);
    const X11PipeGuard guard(c);
    if (const X11Reply<xcb_generic_error_t> refused{xcb_request_check(c, asked)};
        refused != nullptr || !server->isAlive())
        return;
    window = made;
    server->watchWindow(window, *this);
}

X11Window::~X11Window()
{
    destroy();
}

void X11Window::destroy()
{
    if (window == 0)
        return;
    server->forgetWindow(window);
    xcb_destroy_window(server->xcb(), window);
    server->flush();
    window = 0;
}

void X11Window::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    if (type == XCB_DESTROY_NOTIFY)
    {
        server->forgetWindow(window);
        window = 0;
    }
    else if (type == XCB_CONFIGURE_NOTIFY && int(event.full_sequence - lastConfigured) >= 0)
    {
        where.width = as<xcb_configure_notify_event_t>(event).width;
        where.height = as<xcb_configure_notify_event_t>(event).height;
    }
    sink.handleEvent(type, event); // may be the end of this
}

void X11Window::show()
{
    if (window != 0)
        xcb_map_window(server->xcb(), window);
    server->flush();
}

void X11Window::hide()
{
    if (window != 0)
        xcb_unmap_window(server->xcb(), window);
    server->flush();
}

void X11Window::setPlace(const X11Place& next)
{
    where = boundedByServer(next);
    if (window == 0)
        return;
    const std::uint32_t values[] = {std::uint32_t(where.x), std::uint32_t(where.y),
                                    std::uint32_t(where.width), std::uint32_t(where.height)};
    constexpr std::uint16_t all =
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
    lastConfigured = xcb_configure_window(server->xcb(), window, all, values).sequence;
    server->flush();
}

void X11Window::setCursor(xcb_cursor_t cursor)
{
    if (window != 0)
        xcb_change_window_attributes(server->xcb(), window, XCB_CW_CURSOR, &cursor);
    server->flush();
}

void X11Window::takeFocus()
{
    if (window != 0)
        xcb_set_input_focus(server->xcb(), XCB_INPUT_FOCUS_PARENT, window, server->lastTime());
    server->flush();
}

void X11Window::setProperty(xcb_atom_t name, xcb_atom_t type, const std::uint32_t* values,
                            std::uint32_t count)
{
    if (window != 0)
        xcb_change_property(server->xcb(), XCB_PROP_MODE_REPLACE, window, name, type, 32, count, values);
}
}
