// SPDX-License-Identifier: GPL-3.0-or-later
// From the units in which views are laid out to the pixels of a picture, and onto whole pixels where a
// fractional scale would blur what is upright or level.
//
// At a whole scale (1, 2, 3) coordinates are only multiplied, since what is crisp at 1 stays crisp then. At a
// fractional one, edges go to the nearest whole pixel, so that neighbours share them, and strokes cover whole
// pixels. A stroke of less than one pixel is kept within one row of pixels at every scale but 1.
#pragma once

#include <agg_path_storage.h>

namespace Tovra
{
using RendererPath = agg::path_base<agg::vertex_block_storage<double, 8, 256>>;

// [window thread]
class PixelGrid
{
public:
    // Pixels to a unit.
    explicit PixelGrid(double pixelsPerUnit = 1.0);

    double scale() const { return pixels; }
    bool isWhole() const { return whole; }
    double toPixels(double units) const { return units * pixels; }
    double toUnits(double inPixels) const { return inPixels / pixels; }
    // The edge of a clip, a picture or a rectangle, in pixels.
    double edge(double units) const;
    // The pixel that begins there, or nearest to there; at scale 1 the one that contains the point.
    double pixel(double units) const;

    // Whether level and upright lines of a path have to be moved before it is filled, or stroked with that
    // width in pixels.
    bool fitsFills() const { return !whole; }
    bool fitsStrokes(double width) const { return !whole || (pixels != 1.0 && width < 1.0); }
    // Move them. Paths and rectangles are in pixels. What has been moved stays where it is the next time.
    void fitFill(RendererPath& path) const;
    agg::rect_d fitFill(const agg::rect_d& sides) const;
    // Answers the width to stroke with.
    double fitStroke(RendererPath& path, double width) const;
    agg::rect_d fitStroke(const agg::rect_d& sides, double width) const;

private:
    double strokeWidth(double width) const;
    double strokeCenter(double at, double width) const;

    double pixels;
    bool whole;
};
}
