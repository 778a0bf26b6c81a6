// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PelmoAGGPipelines.h"

#include <agg_bezier_arc.h>
#include <agg_rounded_rect.h>
#include <numbers>

namespace Tovra
{
// A join sticks out by less than this many half widths: a mitre by 4, with its cut corners by the root of 17.
constexpr double longestJoin = 5.0;
constexpr double roundingMargin = 2.0; // pixels; of coordinates and of points on curves

namespace
{
// The box around the points of a path, those that only direct its curves included.
class PathBox
{
public:
    template <class Path>
    explicit PathBox(const Path& path)
    {
        for (unsigned i = 0; i < path.total_vertices(); ++i)
        {
            double x, y;
            if (!agg::is_vertex(path.vertex(i, &x, &y)))
                continue;
            box.x1 = std::min(box.x1, x);
            box.y1 = std::min(box.y1, y);
            box.x2 = std::max(box.x2, x);
            box.y2 = std::max(box.y2, y);
        }
    }

    // Whether a shape that reaches that far beyond the box may have pixels in the clip, whose edges are
    // inside.
    bool meets(const agg::rect_i& clip, double reach) const
    {
        reach += roundingMargin;
        return box.x1 - reach <= clip.x2 && box.x2 + reach >= clip.x1 && box.y1 - reach <= clip.y2 &&
               box.y2 + reach >= clip.y1;
    }

private:
    agg::rect_d box{4.0 * farthest, 4.0 * farthest, -4.0 * farthest, -4.0 * farthest};
};
}

void PelmoAGG::resetPath()
{
    pipelines->path.remove_all();
}

void PelmoAGG::moveTo(double x, double y)
{
    const PixelGrid& grid = pipelines->grid;
    if (areNumbers(x, y))
        pipelines->path.move_to(pulledIn(grid.toPixels(x)), pulledIn(grid.toPixels(y)));
}

void PelmoAGG::lineTo(double x, double y)
{
    const PixelGrid& grid = pipelines->grid;
    if (areNumbers(x, y))
        pipelines->path.line_to(pulledIn(grid.toPixels(x)), pulledIn(grid.toPixels(y)));
}

void PelmoAGG::closePolygon()
{
    pipelines->path.close_polygon();
}

template <size_t count, class Outline>
void PelmoAGG::Pipelines::rasterize(Colors colors, const double (&settings)[count], Outline outline)
{
    beginShape(colors);
    agg::outline_cache::shape* const known = outlines.find(path, settings, outline);
    if (known == nullptr)
        rasterizer.add_path(outline());
    else if (colors == generatedColors || !known->coverage.is_complete({rasterizer.clip(), wholeClip}))
        known->add_to(rasterizer);
    if (known != nullptr && colors == oneColor)
        covered = &known->coverage;
    curves.attach(path);
}

void PelmoAGG::Pipelines::rasterizeFill(Colors colors)
{
    const auto outline = [this]() -> auto&
    {
        if (grid.fitsFills())
        {
            fittedPath = path;
            grid.fitFill(fittedPath);
            curves.attach(fittedPath);
        }
        return curves;
    };
    rasterize(colors, {grid.scale()}, outline);
}

void PelmoAGG::Pipelines::rasterizeStroke()
{
    const double width = std::clamp(grid.toPixels(lineWidth), -widestLine, widestLine);
    const auto outline = [ this, width ]() -> auto&
    {
        stroke.width(width);
        if (grid.fitsStrokes(width))
        {
            fittedPath = path;
            stroke.width(grid.fitStroke(fittedPath, width));
            curves.attach(fittedPath);
        }
        return stroke;
    };
    rasterize(oneColor, {grid.scale(), width}, outline);
}

void PelmoAGG::drawPath(DrawPathFlag flag)
{
    Pipelines& p = *pipelines;
    if (p.closed())
        return;
    const PathBox box(p.path);
    const double widest = std::fabs(p.grid.toPixels(p.lineWidth)) + 1.0; // on the grid
    if (!box.meets(p.clipPixels, widest * 0.5 * longestJoin))
        return;
    const bool fills = flag == kFillOnly || flag == kFillAndStroke;
    const bool strokes = flag == kStrokeOnly || flag == kFillAndStroke;

    if ((fills && (p.fillIsGradient || p.fillColor.a > 0)) || flag == kFillWithLineColor)
    {
        const bool isGradient = fills && p.fillIsGradient;
        p.rasterizeFill(isGradient ? Pipelines::generatedColors : Pipelines::oneColor);
        if (isGradient)
            PelmoAGGRenderer::renderWithFillType(p);
        else
            PelmoAGGRenderer::render(p, fills ? p.fillColor : p.lineColor);
    }
    if (strokes && p.lineColor.a > 0 && p.lineWidth > 0.0)
    {
        p.rasterizeStroke();
        PelmoAGGRenderer::render(p, p.lineColor);
    }
}

void PelmoAGG::line(double x1, double y1, double x2, double y2)
{
    if (!areNumbers(x1, y1, x2, y2))
        return;
    resetPath();
    moveTo(x1, y1);
    lineTo(x2, y2);
    drawPath(kStrokeOnly);
}

void PelmoAGG::rectangle(double x1, double y1, double x2, double y2)
{
    if (!areNumbers(x1, y1, x2, y2))
        return;
    resetPath();
    moveTo(x1, y1);
    lineTo(x2, y1);
    lineTo(x2, y2);
    lineTo(x1, y2);
    closePolygon();
    drawPath(kFillAndStroke);
}

void PelmoAGG::Pipelines::makeRoundedRect(const agg::rect_d& sides, double radius)
{
    agg::rounded_rect corners(pulledIn(sides.x1), pulledIn(sides.y1), pulledIn(sides.x2), pulledIn(sides.y2),
                              std::clamp(grid.toPixels(radius), 0.0, farthest));
    corners.normalize_radius();
    corners.approximation_scale(flattening());
    path.remove_all();
    path.concat_path(corners);
}

void PelmoAGG::roundedRect(double x1, double y1, double x2, double y2, double radius)
{
    if (!areNumbers(x1, y1, x2, y2, radius))
        return;
    Pipelines& p = *pipelines;
    const PixelGrid& grid = p.grid;
    const double width = grid.toPixels(p.lineWidth);
    const agg::rect_d sides(grid.toPixels(x1), grid.toPixels(y1), grid.toPixels(x2), grid.toPixels(y2));
    if (!grid.fitsFills() && !grid.fitsStrokes(width))
    {
        p.makeRoundedRect(sides, radius);
        return drawPath(kFillAndStroke);
    }
    p.makeRoundedRect(grid.fitFill(sides), radius);
    drawPath(kFillOnly);
    p.makeRoundedRect(grid.fitStroke(sides, width), radius);
    drawPath(kStrokeOnly);
}

void PelmoAGG::ellipse(double cx, double cy, double rx, double ry)
{
    if (!areNumbers(cx, cy, rx, ry))
        return;
    const auto pixels = [this](double units) { return pulledIn(pipelines->grid.toPixels(units)); };
    agg::bezier_arc all(pixels(cx), pixels(cy), pixels(rx), pixels(ry), 0.0, 2.0 * std::numbers::pi);
    resetPath();
    pipelines->path.concat_path(all);
    closePolygon();
    drawPath(kFillAndStroke);
}

void PelmoAGG::arc(double cx, double cy, double rx, double ry, double start, double sweep)
{
    if (!areNumbers(cx, cy, rx, ry) || !std::isfinite(start) || !std::isfinite(sweep))
        return;
    const auto pixels = [this](double units) { return pulledIn(pipelines->grid.toPixels(units)); };
    agg::bezier_arc part(pixels(cx), pixels(cy), pixels(rx), pixels(ry), start, sweep);
    resetPath();
    pipelines->path.concat_path(part);
    drawPath(kFillAndStroke);
}
}
