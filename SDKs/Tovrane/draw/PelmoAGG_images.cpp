// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/ImageResampling.h"
#include "Tovrane/draw/PelmoAGGPipelines.h"
#include "Tovrane/lib/bgra_rows.h"

#include <cstring>
#include <functional>

namespace Tovra
{
namespace
{
using Byte = unsigned char;
using Image = PelmoAGG::Image;

constexpr std::ptrdiff_t pixelBytes = 4;
constexpr int alphaByte = PixelOrder::A;

// The ways to blend one pixel: with full alpha, with less, or with a compositing operator.
struct Opaquely
{
    void operator()(Byte* to, const Byte* from) const
    {
        if (from[alphaByte] == 0)
            return;
        const int rest = 255 - from[alphaByte];
        for (int c = 0; c < alphaByte; ++c)
            to[c] = Byte(std::min(from[c] + ((rest * to[c]) >> 8), 255));
        to[alphaByte] = Byte(255 - (((255 - to[alphaByte]) * rest) >> 8));
    }
};

struct Faded
{
    int share; // of 256

    void operator()(Byte* to, const Byte* from) const
    {
        const int rest = 255 - ((from[alphaByte] * share) >> 8);
        for (int c = 0; c < alphaByte; ++c)
            to[c] = Byte(std::min((from[c] * share + rest * to[c]) >> 8, 255));
        to[alphaByte] = Byte(255 - (((255 - to[alphaByte]) * rest) >> 8));
    }
};

struct Composed
{
    CompOp blend;
    Byte cover;

    void operator()(Byte* to, const Byte* from) const
    {
        blend(to, from[PixelOrder::R], from[PixelOrder::G], from[PixelOrder::B], from[alphaByte], cover);
    }
};

// Adding.
struct Added
{
    Composed pixel;

    void operator()(Byte* to, const Byte* from) const { pixel(to, from); }
};

template <class Blend>
void blendRow(Byte* to, const Byte* from, int pixels, const Blend& blend)
{
    for (; pixels > 0; --pixels, to += pixelBytes, from += pixelBytes)
        blend(to, from);
}

using Rows = agg::bgra_rows<agg::pixel_lanes>;

// Many pixels at once where all are opaque, as most of an editor is.
void blendApart(Byte* to, const Byte* from, int pixels, const Opaquely&)
{
    constexpr int many = 16;
    while (pixels > 0)
    {
        const int count = std::min(pixels, many);
        if (count < many || !agg::pixel_lanes::copy_sixteen_opaque(to, from))
            Rows::lay_over(to, from, unsigned(count));
        to += count * pixelBytes;
        from += count * pixelBytes;
        pixels -= count;
    }
}

void blendApart(Byte* to, const Byte* from, int pixels, const Faded& blend)
{
    Rows::lay_over(to, from, unsigned(pixels), blend.share);
}

void blendApart(Byte* to, const Byte* from, int pixels, const Added& blend)
{
    Rows::add(to, from, unsigned(pixels), blend.pixel.cover);
}

void blendApart(Byte* to, const Byte* from, int pixels, const Composed& blend)
{
    blendRow(to, from, pixels, blend);
}

template <class Blend>
void blendRowFromItsEnd(Byte* to, const Byte* from, int pixels, const Blend& blend)
{
    while (--pixels >= 0)
        blend(to + pixels * pixelBytes, from + pixels * pixelBytes);
}

// Which pixels of an image are drawn where.
struct Placement
{
    int fromX, fromY;
    int toX, toY;
    int width, height;

    void cutLow(int& at, int& other, int& extent, int limit) const
    {
        const int cut = std::max(limit - at, 0);
        at += cut;
        other += cut;
        extent -= cut;
    }

    bool clipTo(const Image& image, const agg::rect_i& clip)
    {
        cutLow(fromX, toX, width, 0);
        cutLow(fromY, toY, height, 0);
        width = std::min(width, int(image.getWidth()) - fromX);
        height = std::min(height, int(image.getHeight()) - fromY);
        cutLow(toX, fromX, width, clip.x1);
        cutLow(toY, fromY, height, clip.y1);
        width = std::min(width, clip.x2 + 1 - toX);
        height = std::min(height, clip.y2 + 1 - toY);
        return width > 0 && height > 0;
    }
};

struct MemoryRange
{
    explicit MemoryRange(const Image& image)
        : begin(std::min(image.row(0), image.row(int(image.getHeight()) - 1))),
          end(std::max(image.row(0), image.row(int(image.getHeight()) - 1)) + image.getWidth() * pixelBytes)
    {
    }

    bool overlaps(const MemoryRange& other) const
    {
        return std::less<>()(begin, other.end) && std::less<>()(other.begin, end);
    }

    const Byte* begin;
    const Byte* end;
};

// If both pictures share memory, no pixel may be written before it has been read: when it moves to a higher
// address, the last pixel is the first to be drawn.
template <class Blend>
void blendPlaced(const Image& picture, const Image& image, const Placement& at, const Blend& blend)
{
    const auto to = [&](int y) { return picture.row(at.toY + y) + at.toX * pixelBytes; };
    const auto from = [&](int y) { return image.row(at.fromY + y) + at.fromX * pixelBytes; };
    const bool fromTheEnd =
        MemoryRange(picture).overlaps(MemoryRange(image)) && std::less<>()(from(0), to(0));
    const bool lastRowFirst = fromTheEnd && picture.getStride() > 0;
    const bool isApart = !MemoryRange(picture).overlaps(MemoryRange(image));
    for (int i = 0; i < at.height; ++i)
    {
        const int y = lastRowFirst ? at.height - 1 - i : i;
        if (isApart)
            blendApart(to(y), from(y), at.width, blend);
        else if (fromTheEnd)
            blendRowFromItsEnd(to(y), from(y), at.width, blend);
        else
            blendRow(to(y), from(y), at.width, blend);
    }
}
}

void PelmoAGG::blendImage(const Image& image, double imgX1, double imgY1, double imgX2, double imgY2,
                          double dstX, double dstY, unsigned int alpha)
{
    const Pipelines& p = *pipelines;
    if (p.closed() || !image.getPixels() || !areNumbers(imgX1, imgY1, imgX2, imgY2, dstX, dstY))
        return;
    if (image.getScale() != p.grid.scale())
    {
        const double pixel = 1.0 / image.getScale();
        return blendResampled(image, {imgX1, imgY1, imgX2 + pixel, imgY2 + pixel}, {dstX, dstY}, alpha);
    }
    const auto pixel = [&p](double units) { return wholePixels(p.grid.pixel(units)); };
    Placement at{pixel(imgX1), pixel(imgY1), pixel(dstX), pixel(dstY), 0, 0};
    at.width = pixel(imgX2) - at.fromX + 1;
    at.height = pixel(imgY2) - at.fromY + 1;
    if (!at.clipTo(image, p.clipPixels))
        return;

    const int scaled = int(std::min(alpha, 255u) * p.masterAlpha);
    if (p.blendMode == kBlendPlus)
        blendPlaced(p.picture, image, at, Added{{compOps[size_t(p.blendMode)], Byte(scaled)}});
    else if (p.blendMode != kBlendAlpha)
        blendPlaced(p.picture, image, at, Composed{compOps[size_t(p.blendMode)], Byte(scaled)});
    else if (scaled == 255)
        blendPlaced(p.picture, image, at, Opaquely{});
    else
        blendPlaced(p.picture, image, at, Faded{scaled + 1});
}

void PelmoAGG::blendResampled(const Image& image, const CRect& part, const CPoint& at, unsigned int alpha)
{
    const double scale = pipelines->grid.scale();
    const ImageResampling to(image, part, at, scale);
    if (to.width == 0 || to.height == 0 || to.width > maxSide || to.height > maxSide ||
        to.part.x2 < to.part.x1 || to.part.y2 < to.part.y1)
        return;
    std::vector<Byte> pixels(std::size_t(to.width) * to.height * std::size_t(pixelBytes));
    const Image resampled(pixels.data(), to.width, to.height, int(to.width * unsigned(pixelBytes)), scale);
    resampleImage(image, to.part, resampled);
    blendImage(resampled, to.at.x, to.at.y, alpha);
}

void PelmoAGG::blendImage(const Image& image, double dstX, double dstY, unsigned int alpha)
{
    const double scale = image.getScale();
    blendImage(image, 0.0, 0.0, (image.getWidth() - 1.0) / scale, (image.getHeight() - 1.0) / scale, dstX,
               dstY, alpha);
}

void PelmoAGG::imageFilter(ImageFilter filter)
{
    Pipelines& p = *pipelines;
    if (filter == p.imageFilter || filter < kFilterNone || filter > kFilterBlackman)
        return;
    p.imageFilter = filter;
    const auto fill = [&p](const auto& shape) { p.filterTable.calculate(shape, true); };
    switch (filter)
    {
    case kFilterNone:
        break;
    case kFilterBilinear:
        return fill(agg::image_filter_bilinear());
    case kFilterHanning:
        return fill(agg::image_filter_hanning());
    case kFilterHermite:
        return fill(agg::image_filter_hermite());
    case kFilterQuadric:
        return fill(agg::image_filter_quadric());
    case kFilterBicubic:
        return fill(agg::image_filter_bicubic());
    case kFilterCatrom:
        return fill(agg::image_filter_catrom());
    case kFilterSpline16:
        return fill(agg::image_filter_spline16());
    case kFilterSpline36:
        return fill(agg::image_filter_spline36());
    case kFilterBlackman:
        return fill(agg::image_filter_blackman(6.0));
    }
}

// Limits within which the spans' 24.8 fixed point can scale a picture.
constexpr double smallestTarget = 1.0 / 16;
constexpr int farthestSource = 1 << 15;

void PelmoAGG::transformImage(const Image& image, int imgX1, int imgY1, int imgX2, int imgY2, double dstX1,
                              double dstY1, double dstX2, double dstY2)
{
    Pipelines& p = *pipelines;
    const auto near = [](int v) { return std::clamp(v, -farthestSource, farthestSource); };
    if (p.closed() || !image.getPixels() || !areNumbers(dstX1, dstY1, dstX2, dstY2) ||
        near(imgX1) == near(imgX2) || near(imgY1) == near(imgY2))
        return;
    const double left = pulledIn(p.grid.edge(dstX1));
    const double top = pulledIn(p.grid.edge(dstY1));
    const double right = pulledIn(p.grid.edge(dstX2));
    const double bottom = pulledIn(p.grid.edge(dstY2));
    if (std::fabs(right - left) < smallestTarget || std::fabs(bottom - top) < smallestTarget)
        return;
    const double corners[6] = {left, top, right, top, right, bottom};
    agg::trans_affine toSource(near(imgX1), near(imgY1), near(imgX2), near(imgY2), corners);
    toSource.invert();
    toSource *= agg::trans_affine_scaling(image.getScale());

    p.path.remove_all();
    p.path.move_to(left, top);
    p.path.line_to(right, top);
    p.path.line_to(right, bottom);
    p.path.line_to(left, bottom);
    p.path.close_polygon();
    p.beginShape(Pipelines::generatedColors);
    p.rasterizer.add_path(p.path);
    PelmoAGGRenderer::renderImage(p, image, toSource);
}
}
