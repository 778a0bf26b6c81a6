// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the renderer that draws text: the font, the glyph caches, and the way from a glyph to pixels.
//
// The font engine is created, and a face opened, when text is first measured or drawn, since most renderers
// (those of bitmaps) never do. Drawing a text allocates nothing once its glyphs are in the cache.
#pragma once

#include "Tovrane/draw/PelmoAGGPipelines.h"

#include <memory>
#include <string>

namespace agg
{
struct masked_glyph;
}

namespace Tovra
{
class PelmoText
{
public:
    PelmoText();
    ~PelmoText();

    void font(const char* name, const char* data, long length, double height, FontCacheType type,
              double angle);
    void alignment(TextAlignment x, TextAlignment y);
    void hints(TextHintsType hints);
    TextHintsType hints() const { return wanted.hints; }
    // Pixels to a unit; from 1.5 on text is always grey.
    void scale(double pixelsPerUnit) { wanted.scale = pixelsPerUnit; }
    // Without sub-pixels side by side, fonts for them are drawn in grey.
    void useSubpixels(SubpixelOrder order);

    // In pixels.
    double width(const char* string);
    // See PelmoAGG::text; the coordinates are in pixels. renderer is the one that this belongs to.
    void draw(PelmoAGG& renderer, double x, double y, const char* string, bool roundOff, double ddx,
              double ddy);

private:
    struct Fonts;
    struct Face
    {
        std::string name;
        const char* data = nullptr;
        long length = 0;
        double height = 0.0; // in units
        double scale = 1.0;
        FontCacheType type = kFontCacheGrey;
        TextHintsType hints = kNoHints;

        bool operator==(const Face&) const = default;
    };

    bool openFont();
    void drawGlyph(PelmoAGG& renderer, agg::masked_glyph& glyph, double x, double y);
    void drawSubpixels(PelmoAGG::Pipelines& p, agg::masked_glyph& glyph, int thirds, int y);
    void drawOutline(PelmoAGG& renderer, const agg::masked_glyph& glyph, double x, double y);

    std::unique_ptr<Fonts> fonts;
    Face wanted;
    Face opened; // without a name if none is
    bool hasSize = false;
    bool hasSubpixels = true;
    bool isRedFirst = true;
    double angle = 0.0;

    TextAlignment alignX = kAlignLeftOrBottom;
    TextAlignment alignY = kAlignRightOrTop;
    double startX = 0.0; // of the text being drawn
    double startY = 0.0;
};
}
