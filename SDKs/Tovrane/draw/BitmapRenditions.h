// SPDX-License-Identifier: GPL-3.0-or-later
// The pixels of a bitmap for every scale: its renditions for 2 and 3 pixels to a unit, where there are any,
// and resampled parts for the scales between.
//
// A rendition stands beside its bitmap under the name with "@2x" or "@3x" appended, and is exactly twice or
// three times as wide and high; any other is ignored. It is decoded when a scale first needs it. Resampled
// parts are kept, up to 16 MiB, so that each is made once. [window thread]
#pragma once

#include "Tovrane/draw/PelmoAGG.h"

#include <agg_basics.h>
#include <compare>
#include <map>
#include <string>
#include <vector>

namespace Tovra
{
class CBitmap;
class CMACBitmap;

class BitmapRenditions
{
public:
    BitmapRenditions();
    ~BitmapRenditions();

    // Reads what stands beside the file or resource, without decoding it.
    void find(const char* name, bool fromFile);
    void clear();

    // The one that was made for scale, or for the next larger scale, or the largest; base, which was made for
    // 1, counts too.
    const PelmoAGG::Image& choose(const PelmoAGG::Image& base, double scale);
    // A part of an image, all four edges inside and cut to what there is, in width x height pixels, which
    // were made for scale. Valid until the next call; empty if there is no memory for it.
    const PelmoAGG::Image& resample(const PelmoAGG::Image& image, agg::rect_i part, unsigned width,
                                    unsigned height, double scale);

private:
    struct Rendition
    {
        int scale;
        std::vector<unsigned char> png; // empty once it is decoded
        CBitmap* bitmap = nullptr;      // one reference
    };

    struct Part
    {
        const unsigned char* pixels; // of the image
        int x1, y1, x2, y2;
        unsigned width, height;
        double scale;

        auto operator<=>(const Part&) const = default;
    };

    struct Resampled
    {
        std::unique_ptr<CMACBitmap> pixels;
        PelmoAGG::Image image;
    };

    const PelmoAGG::Image* decoded(Rendition& rendition, const PelmoAGG::Image& base);
    void forgetParts();

    std::vector<Rendition> renditions; // by growing scale
    std::map<Part, Resampled> parts;
    std::size_t bytes = 0; // of the parts
};
}
