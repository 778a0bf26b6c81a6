// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/overlays/X11MenuPanel.h"

#include <algorithm>

namespace Tovra
{
X11MenuPanel::X11MenuPanel(std::shared_ptr<X11Connection> connected, X11EventSink& events, IMenu& menu,
                           double scale, int x, int y, int besideWidth)
    : server(std::move(connected)),
      canvas(server),
      painter(scale),
      content(std::make_unique<MenuRows>(menu, scale,
                                         [this](const std::string& text)
                                         { return painter.textWidth(canvas.context(), text); })),
      surface(server, events, X11Window::popUp, 0, placeFor(x, y, besideWidth))
{
    const xcb_atom_t type = server->atom(X11Atom::windowTypePopupMenu);
    surface.setProperty(server->atom(X11Atom::windowType), XCB_ATOM_ATOM, &type, 1);
    view.width = surface.place().width;
    view.height = surface.place().height;
    canvas.setSize(view.width, view.height);
    surface.setCursor(server->cursor(kCursorDefault));
    surface.show();
    paint();
}

X11Place X11MenuPanel::placeFor(int x, int y, int besideWidth) const
{
    const int screenWidth = server->screen().width_in_pixels;
    const int screenHeight = server->screen().height_in_pixels;
    const int width = std::min(content->width(), screenWidth);
    const int height = std::min(content->height(), screenHeight);
    if (besideWidth > 0 && x + width > screenWidth)
        x -= besideWidth + width;
    return {std::clamp(x, 0, screenWidth - width), std::clamp(y, 0, screenHeight - height), width, height};
}

int X11MenuPanel::rowAt(int x, int y) const
{
    if (!contains(x, y) || scrollsAt(x, y) != 0)
        return -1;
    return content->rowAt(y - surface.place().y + view.scrolled);
}

int X11MenuPanel::topOf(int row) const
{
    return surface.place().y + (*content)[row].top - view.scrolled;
}

void X11MenuPanel::mark(int row)
{
    if (row == view.marked)
        return;
    view.marked = row;
    if (row >= 0)
    {
        const MenuRow& shown = (*content)[row];
        const int strip = content->height() > view.height ? painter.stripHeight() : 0;
        if (shown.top < view.scrolled + strip)
            scroll(shown.top - strip - view.scrolled);
        else if (shown.top + shown.height > view.scrolled + view.height - strip)
            scroll(shown.top + shown.height - view.scrolled - view.height + strip);
    }
    paint();
}

void X11MenuPanel::scroll(int distance)
{
    const int next = std::clamp(view.scrolled + distance, 0, content->height() - view.height);
    if (next == view.scrolled)
        return;
    view.scrolled = next;
    paint();
}

int X11MenuPanel::scrollsAt(int x, int y) const
{
    if (!contains(x, y))
        return 0;
    const int inside = y - surface.place().y;
    if (view.scrolled > 0 && inside < painter.stripHeight())
        return -1;
    const bool hasMore = view.scrolled + view.height < content->height();
    return hasMore && inside >= view.height - painter.stripHeight() ? 1 : 0;
}

void X11MenuPanel::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    if (type == XCB_VISIBILITY_NOTIFY)
        obscured = as<xcb_visibility_notify_event_t>(event).state == XCB_VISIBILITY_FULLY_OBSCURED;
    if (type != XCB_EXPOSE)
        return;
    const auto& part = as<xcb_expose_event_t>(event);
    canvas.showAgain(surface, {part.x, part.y, part.width, part.height});
}

void X11MenuPanel::paint()
{
    painter.draw(canvas.context(), *content, view);
    canvas.show(surface);
}
}
