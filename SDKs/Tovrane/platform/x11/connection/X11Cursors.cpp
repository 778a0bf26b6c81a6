// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/connection/X11Cursors.h"

#include <xcb/xcb_cursor.h>

namespace Tovra
{
namespace
{
struct CursorNames
{
    int type;
    const char* names[4]; // the first that the theme has
};

// Today's themes have the names of the web; older ones, and the server's own font, those of X.
constexpr CursorNames table[] = {
    {kCursorHSize, {"ew-resize", "sb_h_double_arrow", nullptr, nullptr}},
    {kCursorVSize, {"ns-resize", "sb_v_double_arrow", nullptr, nullptr}},
    {kCursorCrosshair, {"crosshair", "tcross", nullptr, nullptr}},
    {kCursorNotAllowed, {"not-allowed", "crossed_circle", "X_cursor", nullptr}},
    {kCursorHand, {"openhand", "grab", "hand1", "hand2"}},
    {X11Cursors::text, {"text", "xterm", nullptr, nullptr}},
    {kCursorDefault, {"default", "left_ptr", nullptr, nullptr}},
};
}

X11Cursors::X11Cursors(xcb_connection_t* server, xcb_screen_t* screen) : connection(server)
{
    if (xcb_cursor_context_new(connection, screen, &context) < 0)
        context = nullptr;
}

X11Cursors::~X11Cursors()
{
    for (const auto& [type, cursor] : loaded)
        if (cursor != 0)
            xcb_free_cursor(connection, cursor);
    if (context != nullptr)
        xcb_cursor_context_free(context);
}

xcb_cursor_t X11Cursors::get(int type)
{
    const auto found = loaded.find(type);
    return found != loaded.end() ? found->second : loaded[type] = load(type);
}

xcb_cursor_t X11Cursors::load(int type)
{
    const CursorNames* row = std::end(table) - 1; // whatever has no row is the arrow
    for (const CursorNames& candidate : table)
        if (candidate.type == type)
            row = &candidate;
    for (const char* name : row->names)
        if (const auto cursor = context && name ? xcb_cursor_load_cursor(context, name) : 0)
            return cursor;
    return 0;
}
}
