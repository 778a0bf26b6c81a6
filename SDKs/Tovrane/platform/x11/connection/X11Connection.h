// SPDX-License-Identifier: GPL-3.0-or-later
// One connection of our own to the X server. Every frame opens one; closing it frees everything that the
// frame has on the server. No other connection in the process is touched, and there is no process-wide error
// handler: XCB returns errors to whoever asked, and the others are dropped here.
//
// The current run loop watches its descriptor. Events that arrived while a reply was waited for do not make
// the descriptor readable, so a slow timer looks for them, too.
//
// When the connection breaks (the server ends, or cuts us off), each window is told once that it was
// destroyed, and nothing is watched any more.
//
// All of it is [window thread]. Keep it by shared_ptr: a dispatched event may close the frame that owns it.
#pragma once

#include "Tovrane/base/RunLoop.h"
#include "Tovrane/platform/x11/connection/X11Atoms.h"
#include "Tovrane/platform/x11/connection/X11Cursors.h"
#include "Tovrane/platform/x11/connection/X11Desktop.h"
#include "Tovrane/platform/x11/connection/X11Event.h"
#include "Tovrane/platform/x11/connection/X11Keyboard.h"
#include "Tovrane/platform/x11/connection/X11PipeGuard.h"

#include <map>
#include <memory>
#include <string>

namespace Tovra
{
class X11Connection : public std::enable_shared_from_this<X11Connection>
{
public:
    // Connects to the display that DISPLAY names. Null if there is none, or if its screen has no visual for
    // our pictures, which is reported once on standard error.
    static std::shared_ptr<X11Connection> open();
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    xcb_connection_t* xcb() const { return connection; }
    const xcb_screen_t& screen() const { return *screenOfDisplay; }
    // What our windows are made with, whatever the screen's own depth is: pixels are words of 0xffRRGGBB. The
    // depth is 24, or 32 where the screen has no such visual of 24 bits.
    std::uint8_t depth() const { return visualDepth; }
    xcb_visualid_t visual() const { return trueColour; }
    xcb_colormap_t colormap() const { return colours; }
    xcb_atom_t atom(X11Atom name) const { return atoms[name]; }
    // The number of any other name; it stays in the server for ever.
    xcb_atom_t atomOfName(const std::string& name);
    X11Keyboard& keyboard() { return *keys; }
    // Made when it is first asked for.
    X11Desktop& desktop();
    xcb_cursor_t cursor(int type) { return cursors->get(type); }
    // The time of the last event that had one. Requests for the focus and for selections carry it.
    xcb_timestamp_t lastTime() const { return time; }

    // False once the server has gone. Requests then do nothing.
    bool isAlive() const { return xcb_connection_has_error(connection) == 0; }

    // The sink gets the window's events until forgetWindow.
    void watchWindow(xcb_window_t window, X11EventSink& sink) { sinks[window] = &sink; }
    void forgetWindow(xcb_window_t window) { sinks.erase(window); }

    // Gets each event before the windows do, and returns true if the event was meant for it alone. It may be
    // replaced during the call.
    std::function<bool(const xcb_generic_event_t&)> eventFilter;

    // Hands out all events that have arrived, and sends what is waiting to be sent.
    void dispatch();
    // The same, in the next round of the run loop, for events that came along with a reply: they do not wait
    // for the slow timer.
    void dispatchSoon();
    void flush();
    // Waits for the reply to a request; null if the request failed or the server has gone.
    //     const auto reply = server->reply(xcb_query_pointer_reply, xcb_query_pointer(server->xcb(),
    //     window));
    template <typename Reply, typename Cookie>
    X11Reply<Reply> reply(Reply* (*wait)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                          Cookie asked) const
    {
        const X11PipeGuard guard(connection);
        return X11Reply<Reply>{wait(connection, asked, nullptr)};
    }
    // Waits until the server has worked off all requests so far.
    void sync();

    // Whether a window of that number is there.
    bool exists(xcb_window_t window);
    // Whether this connection made it.
    bool isOurs(xcb_window_t window) const;
    // Whether it is the root window of any screen.
    bool isRoot(xcb_window_t window) const;

private:
    X11Connection(xcb_connection_t* opened, xcb_screen_t* screen);

    bool chooseVisual(std::uint8_t wanted);
    void listen();
    void tellThatAllIsLost();
    X11Reply<xcb_generic_event_t> nextEvent();
    void deliver(const xcb_generic_event_t& event);
    void dropOlderMotion(X11Reply<xcb_generic_event_t>& event);

    xcb_connection_t* const connection;
    xcb_screen_t* const screenOfDisplay;
    std::uint8_t visualDepth = 0;
    xcb_visualid_t trueColour = 0;
    xcb_colormap_t colours = 0;
    X11Atoms atoms;
    std::unique_ptr<X11Keyboard> keys;
    std::unique_ptr<X11Cursors> cursors;
    std::map<xcb_window_t, X11EventSink*> sinks;
    std::unique_ptr<X11Desktop> root;
    X11Reply<xcb_generic_event_t> lookedAhead;
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    DescriptorWatch watch;
    RepeatingTimer straggler;
    RepeatingTimer soon;
};
}
