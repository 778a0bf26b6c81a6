// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PelmoAGGPipelines.h"

#include <agg_bezier_arc.h>
#include <agg_rounded_rect.h>
#include <numbers>

namespace Tovra
{
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

void PelmoAGG::Pipelines::rasterizeFill()
{
    rasterizer.reset();
    if (!grid.fitsFills())
        return rasterizer.add_path(curves);
    fittedPath = path;
    grid.fitFill(fittedPath);
    curves.attach(fittedPath);
    rasterizer.add_path(curves);
    curves.attach(path);
}

void PelmoAGG::Pipelines::rasterizeStroke()
{
    const double width = std::clamp(grid.toPixels(lineWidth), -widestLine, widestLine);
    rasterizer.reset();
    stroke.width(width);
    if (!grid.fitsStrokes(width))
        return rasterizer.add_path(stroke);
    fittedPath = path;
    stroke.width(grid.fitStroke(fittedPath, width));
    curves.attach(fittedPath);
    rasterizer.add_path(stroke);
    curves.attach(path);
}

void PelmoAGG::drawPath(DrawPathFlag flag)
{
    Pipelines& p = *pipelines;
    if (p.closed())
        return;
    const bool fills = flag == kFillOnly || flag == kFillAndStroke;
    const bool strokes = flag == kStrokeOnly || flag == kFillAndStroke;

    if ((fills && (p.fillIsGradient || p.fillColor.a > 0)) || flag == kFillWithLineColor)
    {
        p.rasterizeFill();
        if (fills && p.fillIsGradient)
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
