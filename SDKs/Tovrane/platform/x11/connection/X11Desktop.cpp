// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/connection/X11Desktop.h"

#include "CORE/Numbers.h"
#include "Tovrane/platform/x11/connection/X11Connection.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <xcb/xcb_xrm.h>

namespace Tovra
{
namespace
{
constexpr std::size_t mostBytes = std::size_t(1) << 20;
constexpr double smallestScale = 0.75;
constexpr double largestScale = 4.0;
constexpr double dotsAtScale1 = 96.0;
constexpr int deepestWindow = 64;

struct FreeDatabase
{
    void operator()(xcb_xrm_database_t* database) const { xcb_xrm_database_free(database); }
};
using Database = std::unique_ptr<xcb_xrm_database_t, FreeDatabase>;

std::string valueOf(const Database& database, const char* name)
{
    char* found = nullptr;
    if (database == nullptr || xcb_xrm_resource_get_string(database.get(), name, nullptr, &found) != 0)
        return {};
    const std::unique_ptr<char, X11Free> owned(found);
    return found != nullptr ? found : "";
}

// Without the lines "#include ...", which the library would follow into any file.
std::string withoutDirectives(const std::string& resources)
{
    std::istringstream lines(resources.substr(0, resources.find('\0')));
    std::string kept;
    bool goesOn = false; // a line that ends with a backslash continues in the next one
    for (std::string line; std::getline(lines, line);)
    {
        const std::size_t first = line.find_first_not_of(" \t");
        const bool isDirective = first != std::string::npos && line[first] == '#';
        if (!isDirective || goesOn)
            kept += line + "\n";
        goesOn = line.ends_with('\\');
    }
    return kept;
}

double scaleOfDots(const std::string& text)
{
    const double dots = Core::findNumber(text.c_str()).value_or(0.0);
    if (!std::isfinite(dots) || dots <= 0.0)
        return 1.0;
    return std::clamp(dots / dotsAtScale1, smallestScale, largestScale);
}
}

ScreenSettings screenSettingsOf(const std::string& resources)
{
    if (resources.empty() || resources.size() > mostBytes)
        return {};
    const Database database(xcb_xrm_database_from_string(withoutDirectives(resources).c_str()));
    return {scaleOfDots(valueOf(database, "Xft.dpi")), subpixelOrderByName(valueOf(database, "Xft.rgba"))};
}

X11Desktop::X11Desktop(X11Connection& on) : server(on)
{
    const xcb_window_t root = server.screen().root;
    constexpr std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(server.xcb(), root, XCB_CW_EVENT_MASK, &events);
    server.watchWindow(root, *this);
    current = screenSettingsOf(resources());
}

X11Desktop::~X11Desktop()
{
    server.forgetWindow(server.screen().root);
}

std::string X11Desktop::resources() const
{
    const auto asked = xcb_get_property(server.xcb(), 0, server.screen().root, XCB_ATOM_RESOURCE_MANAGER,
                                        XCB_ATOM_STRING, 0, mostBytes / 4);
    const auto reply = server.reply(xcb_get_property_reply, asked);
    if (reply == nullptr || reply->format != 8 || reply->bytes_after != 0)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            std::size_t(xcb_get_property_value_length(reply.get()))};
}

// The calls may be the end of whoever set them.
void X11Desktop::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    if (type != XCB_PROPERTY_NOTIFY)
        return;
    const xcb_atom_t changed = as<xcb_property_notify_event_t>(event).atom;
    if (changed == XCB_ATOM_RESOURCE_MANAGER)
    {
        const ScreenSettings before = current;
        current = screenSettingsOf(resources());
        if (const auto tell = onSettings; tell && current != before)
            tell();
    }
    else if (changed == server.atom(X11Atom::activeWindow))
        if (const auto tell = onActiveWindow)
            tell();
}

xcb_window_t X11Desktop::activeWindow() const
{
    const auto asked = xcb_get_property(server.xcb(), 0, server.screen().root,
                                        server.atom(X11Atom::activeWindow), XCB_ATOM_WINDOW, 0, 1);
    const auto reply = server.reply(xcb_get_property_reply, asked);
    if (reply == nullptr || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4)
        return 0;
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

bool X11Desktop::isActive(xcb_window_t window) const
{
    const xcb_window_t active = activeWindow();
    if (active == 0)
        return true;
    for (int depth = 0; window != 0 && depth < deepestWindow; ++depth)
    {
        if (window == active)
            return true;
        const auto tree = server.reply(xcb_query_tree_reply, xcb_query_tree(server.xcb(), window));
        window = tree != nullptr ? tree->parent : 0;
    }
    return false;
}
}
