// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PelmoAGGPipelines.h"
#include "Tovrane/draw/PelmoText.h"

#include <cstdlib>
#include <utility>

namespace Tovra
{
void PelmoAGG::Image::attach(unsigned char* pixels, unsigned int width, unsigned int height, int stride,
                             double pixelsPerUnit)
{
    *this = Image();
    const std::int64_t rowBytes = std::int64_t(width) * 4;
    if (!pixels || width < 1 || height < 1 || width > maxSide || height > maxSide ||
        std::abs(std::int64_t(stride)) < rowBytes)
        return;
    memory = pixels;
    columns = width;
    rows = height;
    rowStride = stride;
    scale = pixelsPerUnit;
    firstRow = stride < 0 ? pixels - std::ptrdiff_t(height - 1) * stride : pixels;
}

PelmoAGG::PelmoAGG() : pipelines(std::make_unique<Pipelines>())
{
    lineWidth(1.0);
    imageFilter(kFilterBilinear);
}

PelmoAGG::~PelmoAGG() = default;

constexpr double smallestScale = 1.0 / 16;
constexpr double largestScale = 16.0;

void PelmoAGG::scale(double pixelsPerUnit)
{
    Pipelines& p = *pipelines;
    if (!(pixelsPerUnit >= smallestScale && pixelsPerUnit <= largestScale))
        return;
    p.grid = PixelGrid(pixelsPerUnit);
    p.curves.approximation_scale(p.flattening());
    p.text->scale(pixelsPerUnit);
    clipBox(p.clip.x1, p.clip.y1, p.clip.x2, p.clip.y2);
}

double PelmoAGG::scale() const
{
    return pipelines->grid.scale();
}

void PelmoAGG::attach(unsigned char* pixels, unsigned int width, unsigned int height, int stride)
{
    Pipelines& p = *pipelines;
    Image& picture = p.picture;
    picture.attach(pixels, width, height, stride);
    p.rows.attach(picture.getPixels(), picture.getWidth(), picture.getHeight(), picture.getStride());
    p.plain.attach(p.rows);
    p.comp.attach(p.rows);
    p.compPre.attach(p.rows);
    p.pre.attach(p.rows);
    p.lcd.attach(p.rows);

    p.resetState();
    p.scissor = {0, 0, int(maxSide), int(maxSide)};
    clipBox(0.0, 0.0, p.grid.toUnits(picture.getWidth()), p.grid.toUnits(picture.getHeight()));
    lineWidth(1.0);
    imageFilter(kFilterBilinear);
}

void PelmoAGG::attach(Image& image)
{
    attach(image.getPixels(), image.getWidth(), image.getHeight(), image.getStride());
}

bool PelmoAGG::drawsInto(const unsigned char* pixels) const
{
    return pixels != nullptr && pipelines->picture.getPixels() == pixels;
}

void PelmoAGG::clipBox(double x1, double y1, double x2, double y2)
{
    Pipelines& p = *pipelines;
    const double right = p.picture.getWidth();
    const double bottom = p.picture.getHeight();
    p.clip = {x1, y1, x2, y2};
    const agg::rect_d edges(p.grid.edge(x1), p.grid.edge(y1), p.grid.edge(x2), p.grid.edge(y2));
    if (right < 1.0 || !areNumbers(x1, y1, x2, y2) || edges.x1 == edges.x2 || edges.y1 == edges.y2)
        return p.closeClip();

    agg::rect_i box(wholePixels(edges.x1), wholePixels(edges.y1), wholePixels(edges.x2),
                    wholePixels(edges.y2));
    box.normalize();
    if (!box.clip({0, 0, int(right) - 1, int(bottom) - 1}))
        return p.closeClip();
    p.wholeClip = box;
    if (!box.clip(p.scissor))
        return p.closeClip();
    p.clipClosed = false;
    p.openClip(box);
    p.rasterizer.clip_box(std::clamp(edges.x1, 0.0, right), std::clamp(edges.y1, 0.0, bottom),
                          std::clamp(edges.x2, 0.0, right), std::clamp(edges.y2, 0.0, bottom));
}

void PelmoAGG::clipBox(double& x1, double& y1, double& x2, double& y2) const
{
    const agg::rect_d& clip = pipelines->clip;
    x1 = clip.x1;
    y1 = clip.y1;
    x2 = clip.x2;
    y2 = clip.y2;
}

void PelmoAGG::scissor(double left, double top, double right, double bottom)
{
    Pipelines& p = *pipelines;
    if (!areNumbers(left, top, right, bottom))
        return;
    const agg::rect_i next(wholePixels(left), wholePixels(top), wholePixels(right) - 1,
                           wholePixels(bottom) - 1);
    if (next.x1 == p.scissor.x1 && next.y1 == p.scissor.y1 && next.x2 == p.scissor.x2 &&
        next.y2 == p.scissor.y2)
        return;
    p.scissor = next;
    clipBox(p.clip.x1, p.clip.y1, p.clip.x2, p.clip.y2);
}

void PelmoAGG::clearAll(unsigned int r, unsigned int g, unsigned int b, unsigned int a)
{
    const agg::rgba8 color = pipelines->scaledByMaster(agg::rgba8(r, g, b, a));
    const Image& picture = pipelines->picture;
    pipelines->wasUnclipped = true;
    for (unsigned y = 0; y < picture.getHeight(); ++y)
        pipelines->plain.pixels.copy_hline(0, int(y), picture.getWidth(), color);
}

bool PelmoAGG::takeUnclipped()
{
    return std::exchange(pipelines->wasUnclipped, false);
}

void PelmoAGG::alignPoint(double& x, double& y) const
{
    const PixelGrid& grid = pipelines->grid;
    x = grid.toUnits(std::floor(grid.edge(x)) + 0.5);
    y = grid.toUnits(std::floor(grid.edge(y)) + 0.5);
}

void PelmoAGG::masterAlpha(double alpha)
{
    if (areNumbers(alpha))
        pipelines->masterAlpha = std::clamp(alpha, 0.0, 1.0);
}

double PelmoAGG::masterAlpha() const
{
    return pipelines->masterAlpha;
}

void PelmoAGG::blendMode(BlendMode mode)
{
    if (mode < kBlendClear || mode > kBlendAlpha)
        return;
    pipelines->blendMode = mode;
    if (mode == kBlendAlpha)
        return;
    pipelines->comp.pixels.comp_op(unsigned(mode));
    pipelines->compPre.pixels.comp_op(unsigned(mode));
}

BlendMode PelmoAGG::blendMode() const
{
    return pipelines->blendMode;
}

void PelmoAGG::imageBlendMode(BlendMode mode)
{
    pipelines->imageBlendMode = mode;
}

BlendMode PelmoAGG::imageBlendMode() const
{
    return pipelines->imageBlendMode;
}

void PelmoAGG::imageBlendColor(const agg::rgba8& color)
{
    pipelines->imageBlendColor = color;
}

void PelmoAGG::imageBlendColor(unsigned int r, unsigned int g, unsigned int b, unsigned int a)
{
    imageBlendColor(agg::rgba8(r, g, b, a));
}

agg::rgba8 PelmoAGG::imageBlendColor() const
{
    return pipelines->imageBlendColor;
}

void PelmoAGG::imageResample(bool always)
{
    pipelines->imageResample = always;
}

bool PelmoAGG::imageResample() const
{
    return pipelines->imageResample;
}

ImageFilter PelmoAGG::imageFilter() const
{
    return pipelines->imageFilter;
}

void PelmoAGG::fillColor(const agg::rgba8& color)
{
    pipelines->fillColor = pipelines->scaledByMaster(color);
    pipelines->fillIsGradient = false;
}

void PelmoAGG::fillColor(unsigned int r, unsigned int g, unsigned int b, unsigned int a)
{
    fillColor(agg::rgba8(r, g, b, a));
}

void PelmoAGG::noFill()
{
    fillColor(0, 0, 0, 0);
}

agg::rgba8 PelmoAGG::fillColor() const
{
    return pipelines->fillColor;
}

void PelmoAGG::lineColor(const agg::rgba8& color)
{
    pipelines->lineColor = pipelines->scaledByMaster(color);
}

void PelmoAGG::lineColor(unsigned int r, unsigned int g, unsigned int b, unsigned int a)
{
    lineColor(agg::rgba8(r, g, b, a));
}

void PelmoAGG::noLine()
{
    lineColor(0, 0, 0, 0);
}

agg::rgba8 PelmoAGG::lineColor() const
{
    return pipelines->lineColor;
}

PelmoAGG::Colors PelmoAGG::colors() const
{
    return {pipelines->fillColor, pipelines->lineColor, pipelines->fillIsGradient};
}

void PelmoAGG::colors(const Colors& saved)
{
    pipelines->fillColor = saved.fill;
    pipelines->lineColor = saved.line;
    pipelines->fillIsGradient = saved.fillIsGradient;
}

void PelmoAGG::lineWidth(double width)
{
    if (areNumbers(width))
        pipelines->lineWidth = width;
}

double PelmoAGG::lineWidth() const
{
    return pipelines->lineWidth;
}
}
