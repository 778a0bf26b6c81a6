// SPDX-License-Identifier: GPL-3.0-or-later
// One window of our own on the server: gone with this object, or earlier when the server says that it, or the
// parent it lies in, was destroyed. Then it has no number any more and nothing that is asked of it happens.
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
        popUp, // no window manager touches it
        hidden // never shown, draws nothing: for selections
    };

    // Made, but not shown. All of its events go on to the sink, after the window has taken note of them.
    // parent 0 is the root. Its own number is 0 if the server refused it.
    X11Window(std::shared_ptr<X11Connection> server, X11EventSink& events, Kind kind, xcb_window_t parent,
              const X11Place& place);
    ~X11Window() override;
    X11Window(const X11Window&) = delete;
    X11Window& operator=(const X11Window&) = delete;

    xcb_window_t id() const { return window; }
    bool isGone() const { return window == 0; }
    // Where it was put, and the size that it has.
    const X11Place& place() const { return where; }

    void show();
    void hide();
    void setPlace(const X11Place& next);
    void setCursor(xcb_cursor_t cursor);
    // Takes keys from here on, as far as the time of the last event allows it.
    void takeFocus();
    void setProperty(xcb_atom_t name, xcb_atom_t type, const std::uint32_t* values, std::uint32_t count);
    void destroy();

    // The place with sizes that X can bear: 1 to 32767.
    static X11Place bounded(double x, double y, double width, double height);

    X11Connection& connection() const { return *server; }
    const std::shared_ptr<X11Connection>& sharedConnection() const { return server; }

private:
    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;

    const std::shared_ptr<X11Connection> server;
    X11EventSink& sink;
    xcb_window_t window = 0;
    X11Place where;
    unsigned int lastConfigured = 0; // the request: what the server told before that is old news
};
}
