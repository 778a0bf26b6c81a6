// SPDX-License-Identifier: GPL-3.0-or-later
// The cursors of the user's theme, loaded when first asked for.
#pragma once

#include "Tovrane/window/CCursorType.h"

#include <map>
#include <xcb/xproto.h>

struct xcb_cursor_context_t;

namespace Tovra
{
// [window thread]
class X11Cursors
{
public:
    X11Cursors(xcb_connection_t* server, xcb_screen_t* screen);
    ~X11Cursors();
    X11Cursors(const X11Cursors&) = delete;
    X11Cursors& operator=(const X11Cursors&) = delete;

    // The I-beam over a text field; views do not ask for it.
    static constexpr int text = -1;
    // type: a CCursorType, or text. 0, which stands for the parent's cursor, if the server has none at all.
    xcb_cursor_t get(int type);

private:
    xcb_cursor_t load(int type);

    xcb_connection_t* const connection;
    xcb_cursor_context_t* context = nullptr;
    std::map<int, xcb_cursor_t> loaded;
};
}
