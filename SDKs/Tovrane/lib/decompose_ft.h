// From FreeType's outlines and bitmaps to AGG's paths and scanlines.
#pragma once

#include <agg_path_storage_integer.h>
#include <agg_scanline_storage_bin.h>
#include <agg_trans_affine.h>

struct FT_Bitmap_;
struct FT_Outline_;

namespace agg
{
// [window thread]  As the font engine, which calls these.

// Whether it lies within the limits: its points not beyond a million pixels from the origin, its box no more
// than 16 Mi pixels, where each counts pixel_parts times.
bool is_drawable(const FT_Outline_& outline, unsigned pixel_parts);

// Into path, transformed. False if the outline is damaged. It has to be drawable.
bool decompose_ft_outline(FT_Outline_& outline, const trans_affine& affine,
                          path_storage_integer<int, 6>& path);

// The pixels that are set, as runs; with flip_y the top row has the lowest y.
void decompose_ft_bitmap_mono(const FT_Bitmap_& bitmap, int left, int top, bool flip_y,
                              scanline_storage_bin& storage);
}
