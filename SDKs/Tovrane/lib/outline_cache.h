// SPDX-License-Identifier: GPL-3.0-or-later
// Remembers the outlines of shapes that are drawn again and again: the polygons into which AGG turns a path
// with curves, or the line along it, in 1/256 of a pixel as the rasteriser takes them.
//
// A shape is known by its points and by what else the outline depends on, bit for bit. It has one place among
// a fixed number, from which a shape with the same remainder pushes it out.
#pragma once

#include "Tovrane/lib/cell_rasterizer.h"

#include <vector>

namespace agg
{
// [window thread]  One thread at a time. Drawing a known shape allocates nothing.
class outline_cache
{
public:
    // Adds the outline of a path to a rasteriser. outline() makes it where it is not known, and answers it as
    // vertices of AGG's. It may depend on the path and on the settings alone, and what is made of the same
    // path in another way (filled, stroked) has another number of them.
    template <class Path, size_t count, class Outline>
    void add_outline(const Path& path, const double (&settings)[count], Outline outline, cell_rasterizer& to)
    {
        if (path.total_vertices() > longest_path)
            return to.add_path(outline());
        m_key.assign(settings, settings + count);
        for (unsigned i = 0; i < path.total_vertices(); ++i)
        {
            double x, y;
            m_key.push_back(path.vertex(i, &x, &y));
            m_key.push_back(x);
            m_key.push_back(y);
        }
        shape& place = place_of_key();
        if (!is_of_key(place))
            fill(place, outline());
        for (const cell_rasterizer::point& each : place.points)
            to.add_point(each);
        if (place.points.size() > longest_outline)
            place = shape();
    }

private:
    struct shape
    {
        std::vector<double> key;
        std::vector<cell_rasterizer::point> points;
    };

    // What is longer is not kept.
    static constexpr unsigned longest_path = 64;
    static constexpr size_t longest_outline = 1024;
    static constexpr size_t places = 128;

    shape& place_of_key();
    bool is_of_key(const shape& known) const;

    template <class Vertices>
    void fill(shape& place, Vertices& vertices)
    {
        place.key = m_key;
        place.points.clear();
        double x = 0.0;
        double y = 0.0;
        vertices.rewind(0);
        for (unsigned command; !is_stop(command = vertices.vertex(&x, &y));)
            place.points.push_back(cell_rasterizer::point_at(x, y, command));
    }

    std::vector<shape> m_shapes; // empty until the first shape is drawn
    std::vector<double> m_key;
};
}
