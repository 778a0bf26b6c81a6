// SPDX-License-Identifier: GPL-3.0-or-later
// Remembers shapes that are drawn again and again: the polygons into which AGG turns a path with curves, or
// the line along it, in 1/256 of a pixel as the rasteriser takes them, and what they cover.
//
// A shape is known by its points and by what else the outline depends on, bit for bit. It is kept from the
// second time on, in one place among a fixed number, from which a shape with the same remainder pushes it
// out.
#pragma once

#include "Tovrane/lib/cell_rasterizer.h"
#include "Tovrane/lib/coverage_record.h"

#include <utility>
#include <vector>

namespace agg
{
// [window thread]  One thread at a time. Drawing a shape that is kept allocates nothing.
class outline_cache
{
public:
    struct shape
    {
        std::uint64_t asked_for = 0; // the hash of the last key that was not there
        std::vector<double> key;
        std::vector<cell_rasterizer::point> points;
        coverage_record coverage; // of the outline, for whoever draws it

        void add_to(cell_rasterizer& rasterizer) const
        {
            for (const cell_rasterizer::point& each : points)
                rasterizer.add_point(each);
        }
    };

    // The shape that a path is, until the next call; null when it is asked for the first time in its place,
    // so that what moves is not kept, and for a path of too many points. outline() makes it where it is not
    // known, and answers it as vertices of AGG's. It may depend on the path and on the settings alone, and
    // what is made of the same path in another way (filled, stroked) has another number of them.
    template <class Path, size_t count, class Outline>
    shape* find(const Path& path, const double (&settings)[count], Outline outline)
    {
        if (path.total_vertices() > longest_path)
            return nullptr;
        m_key.assign(settings, settings + count);
        for (unsigned i = 0; i < path.total_vertices(); ++i)
        {
            double x, y;
            m_key.push_back(path.vertex(i, &x, &y));
            m_key.push_back(x);
            m_key.push_back(y);
        }
        if (m_large != nullptr)
            *m_large = shape();
        const std::uint64_t hash = hash_of_key();
        shape& place = place_of(hash);
        if (!is_of_key(place))
        {
            if (std::exchange(place.asked_for, hash) != hash)
                return nullptr;
            fill(place, outline());
        }
        m_large = place.points.size() > longest_outline ? &place : nullptr;
        return &place;
    }

private:
    // What is longer is not kept.
    static constexpr unsigned longest_path = 64;
    static constexpr size_t longest_outline = 1024;
    static constexpr size_t places = 128;

    std::uint64_t hash_of_key() const;
    shape& place_of(std::uint64_t hash);
    bool is_of_key(const shape& known) const;

    template <class Vertices>
    void fill(shape& place, Vertices& vertices)
    {
        place.key = m_key;
        place.points.clear();
        place.coverage.forget();
        double x = 0.0;
        double y = 0.0;
        vertices.rewind(0);
        for (unsigned command; !is_stop(command = vertices.vertex(&x, &y));)
            place.points.push_back(cell_rasterizer::point_at(x, y, command));
    }

    std::vector<shape> m_shapes; // empty until the first shape is drawn
    shape* m_large = nullptr;    // is dropped with the next call
    std::vector<double> m_key;
};
}
