// SPDX-License-Identifier: GPL-3.0-or-later
// A picture while a plot is drawn on it with the toolkit: areas, lines and type in the plot's two sizes.
// Points are in pixels from the upper left corner.
#pragma once

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <string>
#include <vector>

namespace lodex
{
class PlotPicture
{
public:
    using Points = std::vector<Tovra::CPoint>;
    enum Type
    {
        title,
        label
    };

    PlotPicture(int width, int height, Tovra::CColor ground);

    void fill(const Points& outline, Tovra::CColor color);
    // From one colour at the height y1 to another at y2.
    void fillFading(const Points& outline, double y1, Tovra::CColor color1, double y2, Tovra::CColor color2);
    void fillRounded(const Tovra::CRect& rect, float radius, Tovra::CColor color);
    // Sharp corners end flat.
    void stroke(const Points& line, double lineWidth, Tovra::CColor color);
    // Lines of one pixel, moved to whole pixels.
    void vertical(double x, double top, double bottom, Tovra::CColor color);
    void horizontal(double left, double right, double y, Tovra::CColor color);

    // UTF-8, on whole pixels. baseline.x is the text's left, middle or right.
    void text(Tovra::CPoint baseline, const std::string& words, Type type, Tovra::CColor color,
              Tovra::CHoriTxtAlign align = Tovra::kTextLeft);
    double textWidth(const std::string& words, Type type);

    // A ToolError if there is not enough memory.
    std::vector<unsigned char> png();

private:
    void fill(const Points& outline);

    Tovra::CMACBitmap bitmap;
    Tovra::PelmoAGG renderer;
    Tovra::CDrawContext context;
    Tovra::CFontDesc fonts[2]; // by Type
};
}
