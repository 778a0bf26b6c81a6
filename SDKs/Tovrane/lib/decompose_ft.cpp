// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/decompose_ft.h"

#include <agg_scanline_bin.h>
#include <cstddef>
#include <cstdint>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include <initializer_list>

namespace agg
{
namespace
{
// The spans of AGG's scanlines have positions and lengths of 16 bits. A glyph from one limit to the other
// still fits, in sub-pixels and with the reach of their filter on both sides.
constexpr FT_Pos farthestPixel = 5400;
constexpr FT_Pos farthestPoint = farthestPixel * 64;
constexpr FT_Pos subpixels = 3, filterReach = 2;
static_assert(2 * farthestPixel * subpixels + 2 * filterReach <= 32767);

constexpr std::uint64_t largestGlyph = std::uint64_t(16) << 20; // pixels, or sub-pixels

// Receives the points of an outline, transforms them and appends them to the engine's path.
struct OutlineSink
{
    path_storage_integer<int, 6>& path;
    const trans_affine& affine;

    struct Point
    {
        int x, y;
    };

    Point at(const FT_Vector* vector) const
    {
        double x = double(vector->x), y = double(vector->y);
        affine.transform(&x, &y);
        return {int(x), int(y)};
    }
};

int moveTo(const FT_Vector* to, void* user)
{
    const auto& sink = *static_cast<OutlineSink*>(user);
    const auto end = sink.at(to);
    sink.path.move_to(end.x, end.y);
    return 0;
}

int lineTo(const FT_Vector* to, void* user)
{
    const auto& sink = *static_cast<OutlineSink*>(user);
    const auto end = sink.at(to);
    sink.path.line_to(end.x, end.y);
    return 0;
}

int curve3To(const FT_Vector* control, const FT_Vector* to, void* user)
{
    const auto& sink = *static_cast<OutlineSink*>(user);
    const auto middle = sink.at(control), end = sink.at(to);
    sink.path.curve3(middle.x, middle.y, end.x, end.y);
    return 0;
}

int curve4To(const FT_Vector* control1, const FT_Vector* control2, const FT_Vector* to, void* user)
{
    const auto& sink = *static_cast<OutlineSink*>(user);
    const auto first = sink.at(control1), second = sink.at(control2), end = sink.at(to);
    sink.path.curve4(first.x, first.y, second.x, second.y, end.x, end.y);
    return 0;
}

// Adds the runs of set pixels of one row.
void addRuns(const unsigned char* bits, unsigned width, int left, scanline_bin& scanline)
{
    const auto isSet = [bits](unsigned x) { return (bits[x >> 3] & 0x80 >> (x & 7)) != 0; };
    for (unsigned begin = 0, end; begin < width; begin = end)
    {
        const bool set = isSet(begin);
        for (end = begin + 1; end < width && isSet(end) == set;)
            ++end;
        if (set)
            scanline.add_span(left + int(begin), end - begin, cover_full);
    }
}
}

bool is_drawable(const FT_Outline& outline, unsigned pixel_parts)
{
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    for (const FT_Pos edge : {box.xMin, box.yMin, box.xMax, box.yMax})
        if (edge < -farthestPoint || edge > farthestPoint)
            return false;
    const std::uint64_t w = std::uint64_t(box.xMax - box.xMin) / 64 + 2;
    const std::uint64_t h = std::uint64_t(box.yMax - box.yMin) / 64 + 2;
    return w * pixel_parts * h <= largestGlyph;
}

bool decompose_ft_outline(FT_Outline& outline, const trans_affine& affine, path_storage_integer<int, 6>& path)
{
    static const FT_Outline_Funcs into = {moveTo, lineTo, curve3To, curve4To, 0, 0};
    OutlineSink sink{path, affine};
    path.remove_all();
    return FT_Outline_Decompose(&outline, &into, &sink) == 0;
}

void decompose_ft_bitmap_mono(const FT_Bitmap& bitmap, int left, int top, bool flip_y,
                              scanline_storage_bin& storage)
{
    scanline_bin scanline;
    storage.prepare();
    for (unsigned row = 0; row < bitmap.rows; ++row)
    {
        scanline.reset(left, left + int(bitmap.width));
        addRuns(bitmap.buffer + std::ptrdiff_t(row) * bitmap.pitch, bitmap.width, left, scanline);
        if (scanline.num_spans() == 0)
            continue;
        scanline.finalize(flip_y ? int(row) - top : top - 1 - int(row));
        storage.render(scanline);
    }
}
}
