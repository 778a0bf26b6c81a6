// SPDX-License-Identifier: GPL-3.0-or-later
// The implementation of PelmoAGG: the pipelines from a path to pixels, and the state that selects one.
#pragma once

#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/draw/PelmoCompOps.h"
#include "Tovrane/draw/PixelGrid.h"
#include "Tovrane/lib/cell_rasterizer.h"
#include "Tovrane/lib/outline_cache.h"
#include "Tovrane/lib/pixfmt_bgra.h"
#include "Tovrane/lib/ren_rgba_lcd.h"

#include <agg_conv_curve.h>
#include <agg_conv_stroke.h>
#include <agg_image_filters.h>
#include <agg_pixfmt_rgba.h>
#include <agg_renderer_base.h>
#include <agg_rendering_buffer.h>
#include <agg_span_allocator.h>
#include <agg_trans_affine.h>
#include <algorithm>
#include <cmath>

namespace Tovra
{
class PelmoText;

using Rows = agg::row_accessor<unsigned char>;
using PrePixels = agg::pixfmt_alpha_blend_rgba<agg::blender_rgba_pre<agg::rgba8, PixelOrder>, Rows>;
using CompPixels = agg::pixfmt_custom_blend_rgba<CompOpAdaptor<false>, Rows>;
using CompPrePixels = agg::pixfmt_custom_blend_rgba<CompOpAdaptor<true>, Rows>;

// A pixel format and the renderer that clips for it.
template <class Pixels>
struct PixelPath
{
    void attach(Rows& rows)
    {
        pixels.attach(rows);
        base.attach(pixels);
    }

    Pixels pixels;
    agg::renderer_base<Pixels> base;
};

using ColorTable = agg::pod_auto_array<agg::rgba8, 256>;

// Coordinates are clamped to this range, so that the difference of two fits the rasteriser's 24.8 fixed
// point.
constexpr double farthest = 1 << 21;
constexpr double widestLine = 1 << 16;

inline double pulledIn(double coordinate)
{
    return std::clamp(coordinate, -farthest, farthest);
}

// Truncates any double but a NaN.
inline int wholePixels(double coordinate)
{
    return int(pulledIn(coordinate));
}

template <class... Doubles>
bool areNumbers(Doubles... values)
{
    return !(std::isnan(values) || ...);
}

struct PelmoAGG::Pipelines
{
    Pipelines();
    ~Pipelines();

    // Whether nothing can be drawn, without a picture or with an empty clip.
    bool closed() const { return clipClosed; }
    // AGG's approximation scale for curves and arcs: those of 1 are polygons whose corners lie within a
    // quarter of a pixel, and at other scales they are the same polygons.
    double flattening() const { return 2.0 / grid.scale(); }
    agg::rgba8 scaledByMaster(agg::rgba8 color) const;
    void resetState();
    void closeClip();
    void openClip(const agg::rect_i& box);
    void setGradient(double x1, double y1, double x2, double y2);
    // Makes it the path. The corners follow the sides, which are on the grid already.
    void makeRoundedRect(const agg::rect_d& sides, double radius);
    // A shape of one colour, or one whose colours are generated: these depend on where a span begins, so that
    // all of each row is rasterised.
    enum Colors
    {
        oneColor,
        generatedColors
    };
    void beginShape(Colors colors);
    // Begin a shape and give the path, which is in pixels, to the rasteriser, or, if it has one colour, find
    // what it covers.
    void rasterizeFill(Colors colors);
    void rasterizeStroke();
    template <size_t count, class Outline>
    void rasterize(Colors colors, const double (&settings)[count], Outline outline);

    PixelGrid grid; // what follows is in pixels where it is not said to be in units
    Image picture;
    Rows rows;
    PixelPath<agg::pixfmt_bgra> plain;
    PixelPath<CompPixels> comp;
    PixelPath<CompPrePixels> compPre;
    PixelPath<PrePixels> pre;
    agg::ren_rgba_lcd lcd;

    agg::cell_rasterizer rasterizer;
    agg::outline_cache outlines;
    agg::coverage_record* covered = nullptr; // of the shape that was rasterised last; null if it is not kept
    agg::span_allocator<agg::rgba8> spans;
    RendererPath path;
    RendererPath fittedPath; // to the grid
    agg::conv_curve<RendererPath, agg::curve3, agg::curve4> curves{path};
    agg::conv_stroke<decltype(curves), agg::null_markers> stroke{curves};

    agg::rect_d clip;                                      // in units
    agg::rect_i clipPixels;                                // all four edges are inside
    agg::rect_i wholeClip;                                 // likewise; without the scissor
    agg::rect_i scissor{0, 0, int(maxSide), int(maxSide)}; // likewise
    bool clipClosed = true;
    bool wasUnclipped = false; // something was drawn without a clip

    double masterAlpha = 1.0;
    BlendMode blendMode = kBlendAlpha;
    BlendMode imageBlendMode = kBlendDst;
    agg::rgba8 imageBlendColor;
    bool imageResample = false;
    ImageFilter imageFilter = kFilterNone;
    agg::image_filter_lut filterTable;

    agg::rgba8 fillColor;
    agg::rgba8 lineColor;
    double lineWidth = 1.0; // in units
    bool fillIsGradient = false;
    ColorTable fillTable;
    agg::trans_affine fillMatrix; // from picture to gradient coordinates
    double fillDistance = 0.0;

    SubpixelOrder subpixels = kSubpixelRGB;
    std::unique_ptr<PelmoText> text;
};

// The last step, from the rasteriser to the picture.
struct PelmoAGGRenderer
{
    // Draws what the rasteriser holds in one colour, with the blend mode.
    static void render(PelmoAGG::Pipelines& agg, const agg::rgba8& color);
    // Draws it with the fill's gradient.
    static void renderWithFillType(PelmoAGG::Pipelines& agg);
    // Draws it with the pixels of an image; toSource converts from picture to image coordinates.
    static void renderImage(PelmoAGG::Pipelines& agg, const PelmoAGG::Image& image,
                            agg::trans_affine toSource);
};
}
