// SPDX-License-Identifier: GPL-3.0-or-later
// Converts the toolkit's colours for the renderer. Apart from CColor.h, so that views do not include AGG.
#pragma once

#include "Tovrane/draw/CColor.h"

#include <agg_color_rgba.h>

namespace Tovra
{
// [any thread]  Copies the four bytes.
inline agg::rgba8 aggColorFromCColor(const CColor& color)
{
    return agg::rgba8(color.red, color.green, color.blue, color.alpha);
}
}
