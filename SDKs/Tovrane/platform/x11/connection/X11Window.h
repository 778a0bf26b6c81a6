// SPDX-License-Identifier: GPL-3.0-or-later
// One window of our own on the server. It is destroyed with this object, or earlier, when the server reports
// that the window or its parent was destroyed. From then on its number is 0, and calls do nothing.
#pragma once

#include "Tovrane/platform/x11/connection/X11Connection.h"

namespace Tovra
{
struct X11Place
{
    int x = 0;
    int y = 0;
    int width = 1;
    int height = 1;

    bool operator==(const X11Place&) const = default;
    bool contains(int px, int py) const { return px >= x && py >= y && px < x + width && py < y + height; }
};

// [window thread]
class X11Window : private X11EventSink
{
public:
    enum Kind
    {
        child,
        popUp, // on the screen, without a window manager
        hidden // never shown, draws nothing: for selections
    };

    // Makes the window but does not show it. All of its events go on to the sink, after the window has taken
    // note of them. parent 0 is the root. If the server refuses the window, its number is 0.
    X11Window(std::shared_ptr<X11Connection> server, X11EventSink& events, Kind kind, xcb_window_t parent,
              const X11Place& place);
    ~X11Window() override;
    X11Window(const X11Window&) = delete;
    X11Window& operator=(const X11Window&) = delete;

    xcb_window_t id() const { return window; }
    bool isGone() const { return window == 0; }
    // The position that was asked for last, and the present size.
    const X11Place& place() const { return where; }

    void show();
    void hide();
    void setPlace(const X11Place& next);
    void setCursor(xcb_cursor_t cursor);
    // Asks for the keyboard's focus with the time of the last event. The server ignores it if somebody has
    // asked with a later time.
    void takeFocus();
    void setProperty(xcb_atom_t name, xcb_atom_t type, const std::uint32_t* values, std::uint32_t count);
    void destroy();

    // The nearest place that X allows: whole pixels, sizes of 1 to 32767.
    static X11Place bounded(double x, double y, double width, double height);

    X11Connection& connection() const { return *server; }
    const std::shared_ptr<X11Connection>& sharedConnection() const { return server; }

private:
    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;

    const std::shared_ptr<X11Connection> server;
    X11EventSink& sink;
    xcb_window_t window = 0;
    X11Place where;
    unsigned int lastConfigured = 0; // number of the request; reports from before it are out of date
};
}
