// One open menu, or submenu, on the screen: a small window over all others.
#pragma once

#include "Tovrane/platform/parts/MenuPainter.h"
#include "Tovrane/platform/x11/X11Canvas.h"

namespace Tovra
{
// [window thread]
class X11MenuPanel
{
public:
    // Opens at (x, y) on the screen as far as there is room: otherwise it moves left, and up. A submenu lies
    // beside the row that opens it: then width is that of the menu to the left, and it may go to its other
    // side.
    X11MenuPanel(std::shared_ptr<X11Connection> server, X11EventSink& events, IMenu& menu, double scale,
                 int x, int y, int besideWidth = 0);

    const X11Window& window() const { return surface; }
    const MenuRows& rows() const { return *content; }
    bool contains(int x, int y) const { return surface.place().contains(x, y); }

    int marked() const { return view.marked; }
    // Shows the row as the one under the mouse, and brings it into sight. -1 for none.
    void mark(int row);
    // By the screen's coordinates; -1 for none.
    int rowAt(int x, int y) const;
    // The row of the menu above that opened this one; -1 for the first menu.
    int openedBy() const { return rowAbove; }
    void setOpenedBy(int row) { rowAbove = row; }
    // Where the submenu of a row begins, on the screen.
    int topOf(int row) const;

    // By pixels, as far as there is something to see.
    void scroll(int distance);
    // What a mouse that rests there asks for: -1 up, 1 down, 0 nothing.
    int scrollsAt(int x, int y) const;

    void paint();
    void showAgain(const X11Place& part) { canvas.showAgain(surface, part); }

private:
    X11Place placeFor(int x, int y, int besideWidth) const;

    const std::shared_ptr<X11Connection> server;
    X11Canvas canvas;
    MenuPainter painter;
    std::unique_ptr<MenuRows> content;
    MenuPainter::View view;
    int rowAbove = -1;
    X11Window surface;
};
}
