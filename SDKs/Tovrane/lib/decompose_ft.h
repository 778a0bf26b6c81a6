// SPDX-License-Identifier: GPL-3.0-or-later
// Converts FreeType's outlines and bitmaps to AGG's paths and scanlines. [window thread], like the font
// engine that calls these.
#pragma once

#include <agg_path_storage_integer.h>
#include <agg_scanline_storage_bin.h>
#include <agg_trans_affine.h>

struct FT_Bitmap_;
struct FT_Outline_;

namespace agg
{
// Whether the outline is within the limits: no point farther than 5400 pixels from the origin either way, and
// a bounding box of at most 16 Mi pixels, where each pixel counts pixel_parts times.
bool is_drawable(const FT_Outline_& outline, unsigned pixel_parts);

// Writes the transformed outline to path. False if the outline is damaged. It has to be drawable.
bool decompose_ft_outline(FT_Outline_& outline, const trans_affine& affine,
                          path_storage_integer<int, 6>& path);

// Writes the runs of set pixels to storage; with flip_y the top row has the lowest y.
void decompose_ft_bitmap_mono(const FT_Bitmap_& bitmap, int left, int top, bool flip_y,
                              scanline_storage_bin& storage);
}
