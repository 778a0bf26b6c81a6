// SPDX-License-Identifier: GPL-3.0-or-later
// How an open menu looks: a quiet dark panel with a hairline around it.
#pragma once

#include "Tovrane/platform/parts/MenuRows.h"

#include <string>

namespace Tovra
{
class CDrawContext;

// [window thread]
class MenuPainter
{
public:
    explicit MenuPainter(double pixelsPerUnit) : scale(pixelsPerUnit) {}

    double textWidth(CDrawContext& context, const std::string& text) const;

    struct View
    {
        int width = 0;
        int height = 0;
        int scrolled = 0; // how far the rows are moved up, in pixels
        int marked = -1;  // the row under the mouse
    };
    void draw(CDrawContext& context, const MenuRows& rows, const View& view) const;

    // The strip at either end of a menu that does not fit: it scrolls while the mouse is over the strip.
    int stripHeight() const { return int(16 * scale); }

private:
    void drawRow(CDrawContext& context, const MenuRows& rows, const MenuRow& row, const View& view,
                 bool isMarked) const;
    void drawCheck(CDrawContext& context, double middle) const;
    void drawArrow(CDrawContext& context, double x, double y, bool sideways, bool downwards) const;
    void drawStrip(CDrawContext& context, const View& view, bool atBottom) const;

    const double scale;
};
}
