// SPDX-License-Identifier: GPL-3.0-or-later
// One open menu, or submenu, on the screen: a small window over all others.
#pragma once

#include "Tovrane/platform/parts/MenuPainter.h"
#include "Tovrane/platform/x11/surface/X11Canvas.h"

namespace Tovra
{
// [window thread]
class X11MenuPanel
{
public:
    // Opens at (x, y) on the screen, or further left and up where there is no room for it. A submenu lies
    // beside the row that opens it: besideWidth is then the width of the menu to its left, to whose other
    // side it may move. 0 for the first menu.
    X11MenuPanel(std::shared_ptr<X11Connection> server, X11EventSink& events, IMenu& menu, double scale,
                 int x, int y, int besideWidth = 0);

    const X11Window& window() const { return surface; }
    const MenuRows& rows() const { return *content; }
    bool contains(int x, int y) const { return surface.place().contains(x, y); }

    int marked() const { return view.marked; }
    // Shows the row as the one under the mouse, and brings it into sight. -1 for none.
    void mark(int row);
    // The row at a place on the screen; -1 for none.
    int rowAt(int x, int y) const;
    // The row of the menu above that opened this one; -1 for the first menu.
    int openedBy() const { return rowAbove; }
    void setOpenedBy(int row) { rowAbove = row; }
    // Where the submenu of a row begins, on the screen.
    int topOf(int row) const;

    // Scrolls the rows up by that many pixels, at most to the end.
    void scroll(int distance);
    // Which way a mouse that rests there scrolls: -1 up, 1 down, 0 not at all.
    int scrollsAt(int x, int y) const;

    // Whether other windows cover all of it.
    bool isObscured() const { return obscured; }
    // Handles those events of its window that concern painting and visibility.
    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event);

private:
    void paint();
    X11Place placeFor(int x, int y, int besideWidth) const;

    const std::shared_ptr<X11Connection> server;
    X11Canvas canvas;
    MenuPainter painter;
    std::unique_ptr<MenuRows> content;
    MenuPainter::View view;
    int rowAbove = -1;
    bool obscured = false;
    X11Window surface;
};
}
