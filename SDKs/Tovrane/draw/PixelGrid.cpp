// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PixelGrid.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Tovra
{
namespace
{
constexpr double roundingError = 1e-6; // of coordinates that were multiplied and divided by a scale

double nearest(double at)
{
    return std::floor(at + 0.5 + roundingError);
}

// Goes through the line segments of a path, those that close a polygon included.
template <class Visit>
void eachLine(const RendererPath& path, Visit visit)
{
    unsigned first = 0;
    for (unsigned i = 0; i < path.total_vertices(); ++i)
    {
        const unsigned command = path.command(i);
        if (agg::is_move_to(command))
            first = i;
        else if (agg::is_line_to(command) && i > 0 && agg::is_vertex(path.command(i - 1)))
            visit(i - 1, i);
        else if (agg::is_closed(command) && i > first + 1 && agg::is_vertex(path.command(i - 1)))
            visit(i - 1, first);
    }
}

struct Vertex
{
    double x, y;
    bool isPoint = true; // and not the mark that closes a polygon
    bool isOnUpright = false;
    bool isOnLevel = false;
};

// The vertices, and which of them are the ends of upright and level lines.
std::vector<Vertex> alignedVertices(const RendererPath& path)
{
    std::vector<Vertex> all(path.total_vertices());
    for (unsigned i = 0; i < path.total_vertices(); ++i)
        all[i].isPoint = agg::is_vertex(path.vertex(i, &all[i].x, &all[i].y));
    eachLine(path,
             [&](unsigned a, unsigned b)
             {
                 const bool isUpright = std::fabs(all[a].x - all[b].x) < roundingError;
                 const bool isLevel = std::fabs(all[a].y - all[b].y) < roundingError;
                 if (isUpright == isLevel) // slanted, or a point
                     return;
                 (isUpright ? all[a].isOnUpright : all[a].isOnLevel) = true;
                 (isUpright ? all[b].isOnUpright : all[b].isOnLevel) = true;
             });
    return all;
}

struct Extent
{
    double low = 0.0;
    double high = 0.0;

    // A filled shape of less than one pixel is moved into the middle of one, as a whole. Otherwise its edges
    // go to whole pixels, each to the nearest.
    double fitted(double at) const
    {
        const double length = high - low;
        if (length >= 1.0)
            return nearest(at);
        return at - low + std::floor((low + high) * 0.5 + roundingError) + (1.0 - length) * 0.5;
    }
};

Extent extentOf(const std::vector<Vertex>& vertices, double Vertex::*coordinate)
{
    Extent all{HUGE_VAL, -HUGE_VAL};
    for (const Vertex& at : vertices)
        if (at.isPoint)
        {
            all.low = std::min(all.low, at.*coordinate);
            all.high = std::max(all.high, at.*coordinate);
        }
    return all;
}
}

PixelGrid::PixelGrid(double pixelsPerUnit) : pixels(pixelsPerUnit), whole(pixels == std::floor(pixels)) {}

double PixelGrid::edge(double units) const
{
    return whole ? toPixels(units) : nearest(toPixels(units));
}

double PixelGrid::pixel(double units) const
{
    return pixels == 1.0 ? units : nearest(toPixels(units));
}

void PixelGrid::fitFill(RendererPath& path) const
{
    const std::vector<Vertex> vertices = alignedVertices(path);
    const Extent across = extentOf(vertices, &Vertex::x);
    const Extent down = extentOf(vertices, &Vertex::y);
    for (unsigned i = 0; i < vertices.size(); ++i)
    {
        const Vertex& at = vertices[i];
        if (at.isOnUpright || at.isOnLevel)
            path.modify_vertex(i, at.isOnUpright ? across.fitted(at.x) : at.x,
                               at.isOnLevel ? down.fitted(at.y) : at.y);
    }
}

agg::rect_d PixelGrid::fitFill(const agg::rect_d& sides) const
{
    if (!fitsFills())
        return sides;
    const Extent across{std::min(sides.x1, sides.x2), std::max(sides.x1, sides.x2)};
    const Extent down{std::min(sides.y1, sides.y2), std::max(sides.y1, sides.y2)};
    return {across.fitted(sides.x1), down.fitted(sides.y1), across.fitted(sides.x2), down.fitted(sides.y2)};
}

double PixelGrid::strokeWidth(double width) const
{
    return width < 1.0 ? width : nearest(width);
}

// At a whole scale a line stays where it is if moving it would change what is seen at 1.
double PixelGrid::strokeCenter(double at, double width) const
{
    if (whole && std::floor(toUnits(at - width * 0.5) + roundingError) !=
                     std::floor(toUnits(at + width * 0.5) - roundingError))
        return at;
    const double covered = std::max(width, 1.0);
    return nearest(at - covered * 0.5) + covered * 0.5;
}

agg::rect_d PixelGrid::fitStroke(const agg::rect_d& sides, double width) const
{
    if (whole)
        return sides;
    const auto fitted = [this, wide = strokeWidth(width)](double at) { return strokeCenter(at, wide); };
    return {fitted(sides.x1), fitted(sides.y1), fitted(sides.x2), fitted(sides.y2)};
}

double PixelGrid::fitStroke(RendererPath& path, double width) const
{
    const std::vector<Vertex> vertices = alignedVertices(path);
    const auto isOnLine = [](const Vertex& at) { return at.isOnUpright || at.isOnLevel; };
    const auto mayMove = [&](const Vertex& at) { return isOnLine(at) || !at.isPoint; };
    if (whole ? !std::all_of(vertices.begin(), vertices.end(), mayMove)
              : std::none_of(vertices.begin(), vertices.end(), isOnLine))
        return width;
    const double fitted = strokeWidth(width);
    for (unsigned i = 0; i < vertices.size(); ++i)
    {
        const Vertex& at = vertices[i];
        if (at.isOnUpright || at.isOnLevel)
            path.modify_vertex(i, at.isOnUpright ? strokeCenter(at.x, fitted) : at.x,
                               at.isOnLevel ? strokeCenter(at.y, fitted) : at.y);
    }
    return fitted;
}
}
