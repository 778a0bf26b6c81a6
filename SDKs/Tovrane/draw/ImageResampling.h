// SPDX-License-Identifier: GPL-3.0-or-later
// How an image that was made for one scale is drawn at another: it is resampled to the whole pixels that its
// part takes up there, and then blended pixel by pixel. [window thread]
#pragma once

#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <agg_basics.h>

namespace Tovra
{
struct ImageResampling
{
    // part and at are in units: what of the image is drawn, and where its top left goes in a picture with
    // scale pixels to a unit. Nothing is left to draw (width or height are 0) if part is not in the image.
    ImageResampling(const PelmoAGG::Image& image, CRect part, CPoint at, double scale);

    agg::rect_i part;   // of the image, in its pixels; all edges are inside
    unsigned width = 0; // of the result, in pixels
    unsigned height = 0;
    CPoint at; // in units, on a whole pixel
};

// Fills target with a part of image in target's size: bilinear where it grows, and an average of all pixels
// where it shrinks. What lies beside the part has no influence.
void resampleImage(const PelmoAGG::Image& image, const agg::rect_i& part, const PelmoAGG::Image& target);
}
