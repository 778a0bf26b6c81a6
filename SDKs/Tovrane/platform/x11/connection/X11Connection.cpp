// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/connection/X11Connection.h"

#include "Tovrane/platform/x11/connection/X11Event.h"

#include <cstdio>
#include <xcb/xcb.h>

namespace Tovra
{
namespace
{
constexpr int stragglerMilliseconds = 40;

xcb_screen_t* screenNumber(xcb_connection_t* connection, int number)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 1 && number > 0; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

// Whether the server takes a picture of that depth as the words that we draw.
bool takesOurPictures(xcb_connection_t* connection, std::uint8_t depth)
{
    const xcb_setup_t* setup = xcb_get_setup(connection);
    if (setup->image_byte_order != XCB_IMAGE_ORDER_LSB_FIRST)
        return false;
    for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem > 0; xcb_format_next(&format))
        if (format.data->depth == depth)
            return format.data->bits_per_pixel == 32;
    return false;
}

bool isOurVisual(const xcb_visualtype_t& visual)
{
    return visual._class == XCB_VISUAL_CLASS_TRUE_COLOR && visual.red_mask == 0xff0000 &&
           visual.green_mask == 0xff00 && visual.blue_mask == 0xff;
}

// That a window was destroyed, hidden or moved, that a property changed or a selection was lost: a client
// that says so is not believed. (A window manager repeats our place on the screen in this way, which nobody
// needs.)
bool isForTheServerToTell(std::uint8_t type)
{
    return type >= XCB_VISIBILITY_NOTIFY && type <= XCB_SELECTION_CLEAR;
}

void complainOnce()
{
    static bool isDone = false;
    if (!isDone)
        std::fputs(
            "Cannot show the plug-in's window: this X screen has no visual with 8 bits each of red, green "
            "and blue. Use a screen of 24 bits, or turn on the server's Composite extension.\n",
            stderr);
    isDone = true;
}
}

std::shared_ptr<X11Connection> X11Connection::open()
{
    int number = 0;
    xcb_connection_t* opened = xcb_connect(nullptr, &number);
    if (xcb_connection_has_error(opened) != 0)
    {
        xcb_disconnect(opened);
        return nullptr;
    }
    std::shared_ptr<X11Connection> result{new X11Connection(opened, screenNumber(opened, number))};
    if (!result->chooseVisual(24) && !result->chooseVisual(32))
    {
        complainOnce();
        return nullptr;
    }
    result->listen();
    return result;
}

X11Connection::X11Connection(xcb_connection_t* opened, xcb_screen_t* screen)
    : connection(opened), screenOfDisplay(screen)
{
    const X11PipeGuard guard(connection);
    atoms.load(connection);
    keys = std::make_unique<X11Keyboard>(connection);
    cursors = std::make_unique<X11Cursors>(connection, screen);
}

X11Connection::~X11Connection()
{
    root.reset();
    cursors.reset();
    keys.reset();
    if (colours != 0)
        xcb_free_colormap(connection, colours);
    xcb_disconnect(connection);
}

bool X11Connection::chooseVisual(std::uint8_t wanted)
{
    if (!takesOurPictures(connection, wanted))
        return false;
    for (auto depths = xcb_screen_allowed_depths_iterator(screenOfDisplay); depths.rem > 0;
         xcb_depth_next(&depths))
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
             xcb_visualtype_next(&visuals))
            if (depths.data->depth == wanted && isOurVisual(*visuals.data))
            {
                visualDepth = wanted;
                trueColour = visuals.data->visual_id;
                colours = xcb_generate_id(connection);
                xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colours, screenOfDisplay->root,
                                    trueColour);
                return true;
            }
    return false;
}

// The callbacks end with this object, which owns both.
void X11Connection::listen()
{
    watch.start(xcb_get_file_descriptor(connection), [this] { dispatch(); });
    straggler.start(stragglerMilliseconds, [this] { dispatch(); });
}

void X11Connection::flush()
{
    const X11PipeGuard guard(connection);
    xcb_flush(connection);
}

void X11Connection::dispatch()
{
    const auto self = shared_from_this();
    const X11PipeGuard guard(connection);
    while (const auto event = nextEvent())
        deliver(*event);
    flush();
    if (!isAlive())
        tellThatAllIsLost();
}

void X11Connection::dispatchSoon()
{
    soon.start(1,
               [this]
               {
                   soon.stop();
                   dispatch();
               });
}

// Each of the calls may be the end of other windows.
void X11Connection::tellThatAllIsLost()
{
    watch.stop(); // a dead descriptor is readable for ever
    straggler.stop();
    soon.stop();
    while (!sinks.empty())
    {
        const auto [window, sink] = *sinks.begin();
        sinks.erase(sinks.begin());
        xcb_generic_event_t event{};
        event.response_type = XCB_DESTROY_NOTIFY;
        reinterpret_cast<xcb_destroy_notify_event_t&>(event).event = window;
        reinterpret_cast<xcb_destroy_notify_event_t&>(event).window = window;
        sink->handleEvent(XCB_DESTROY_NOTIFY, event);
    }
}

X11Reply<xcb_generic_event_t> X11Connection::nextEvent()
{
    X11Reply<xcb_generic_event_t> event = std::move(lookedAhead);
    if (event == nullptr)
        event.reset(xcb_poll_for_event(connection));
    if (event != nullptr && (event->response_type & 0x7f) == XCB_MOTION_NOTIFY)
        dropOlderMotion(event);
    return event;
}

// Of several moves in a row only the last one counts.
void X11Connection::dropOlderMotion(X11Reply<xcb_generic_event_t>& event)
{
    while ((lookedAhead = X11Reply<xcb_generic_event_t>{xcb_poll_for_event(connection)}) != nullptr)
    {
        const auto& older = as<xcb_motion_notify_event_t>(*event);
        const auto& newer = as<xcb_motion_notify_event_t>(*lookedAhead);
        if ((newer.response_type & 0x7f) != XCB_MOTION_NOTIFY || newer.event != older.event ||
            newer.state != older.state)
            return;
        event = std::move(lookedAhead);
    }
}

void X11Connection::deliver(const xcb_generic_event_t& event)
{
    const std::uint8_t type = event.response_type & 0x7f;
    if (type == 0)
        return; // an error that nobody waited for: of a window that has just gone
    if (wasSent(event) && (isForTheServerToTell(type) || type == keys->eventType()))
        return;
    if (type == keys->eventType())
        return keys->handleEvent(event);
    if (const auto isFiltered = eventFilter; isFiltered && isFiltered(event))
        return;
    if (const auto stamp = timeOfEvent(type, event))
        time = stamp;
    const auto sink = sinks.find(windowOfEvent(type, event));
    if (sink != sinks.end())
        sink->second->handleEvent(type, event);
}

X11Desktop& X11Connection::desktop()
{
    if (root == nullptr)
        root = std::make_unique<X11Desktop>(*this);
    return *root;
}

void X11Connection::sync()
{
    reply(xcb_get_input_focus_reply, xcb_get_input_focus(connection));
}

xcb_atom_t X11Connection::atomOfName(const std::string& name)
{
    const auto asked = xcb_intern_atom(connection, 0, std::uint16_t(name.size()), name.data());
    const auto made = reply(xcb_intern_atom_reply, asked);
    return made != nullptr ? made->atom : xcb_atom_t(XCB_ATOM_NONE);
}

bool X11Connection::isOurs(xcb_window_t window) const
{
    const xcb_setup_t* setup = xcb_get_setup(connection);
    return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

bool X11Connection::isRoot(xcb_window_t window) const
{
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection)); screens.rem > 0;
         xcb_screen_next(&screens))
        if (screens.data->root == window)
            return true;
    return false;
}

bool X11Connection::exists(xcb_window_t window)
{
    return reply(xcb_get_window_attributes_reply, xcb_get_window_attributes(connection, window)) != nullptr;
}
}
