// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PelmoAGGPipelines.h"

#include <agg_bezier_arc.h>
#include <agg_rounded_rect.h>
#include <numbers>

namespace Tovra
{
constexpr double arcScale = 2.0; // as for curves

void PelmoAGG::resetPath()
{
    pipelines->path.remove_all();
}

void PelmoAGG::moveTo(double x, double y)
{
    if (areNumbers(x, y))
        pipelines->path.move_to(pulledIn(x), pulledIn(y));
}

void PelmoAGG::lineTo(double x, double y)
{
    if (areNumbers(x, y))
        pipelines->path.line_to(pulledIn(x), pulledIn(y));
}

void PelmoAGG::closePolygon()
{
    pipelines->path.close_polygon();
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
        p.rasterizer.reset();
        p.rasterizer.add_path(p.curves);
        if (fills && p.fillIsGradient)
            PelmoAGGRenderer::renderWithFillType(p);
        else
            PelmoAGGRenderer::render(p, fills ? p.fillColor : p.lineColor);
    }
    if (strokes && p.lineColor.a > 0 && p.lineWidth > 0.0)
    {
        p.rasterizer.reset();
        p.rasterizer.add_path(p.stroke);
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

void PelmoAGG::roundedRect(double x1, double y1, double x2, double y2, double radius)
{
    if (!areNumbers(x1, y1, x2, y2, radius))
        return;
    agg::rounded_rect corners(pulledIn(x1), pulledIn(y1), pulledIn(x2), pulledIn(y2),
                              std::clamp(radius, 0.0, farthest));
    corners.normalize_radius();
    corners.approximation_scale(arcScale);
    resetPath();
    pipelines->path.concat_path(corners);
    drawPath(kFillAndStroke);
}

void PelmoAGG::ellipse(double cx, double cy, double rx, double ry)
{
    if (!areNumbers(cx, cy, rx, ry))
        return;
    agg::bezier_arc all(pulledIn(cx), pulledIn(cy), pulledIn(rx), pulledIn(ry), 0.0, 2.0 * std::numbers::pi);
    resetPath();
    pipelines->path.concat_path(all);
    closePolygon();
    drawPath(kFillAndStroke);
}

void PelmoAGG::arc(double cx, double cy, double rx, double ry, double start, double sweep)
{
    if (!areNumbers(cx, cy, rx, ry) || !std::isfinite(start) || !std::isfinite(sweep))
        return;
    agg::bezier_arc part(pulledIn(cx), pulledIn(cy), pulledIn(rx), pulledIn(ry), start, sweep);
    resetPath();
    pipelines->path.concat_path(part);
    drawPath(kFillAndStroke);
}
}
