// SPDX-License-Identifier: GPL-3.0-or-later
// How the glyphs of a font are cached and drawn.
#pragma once

namespace Tovra
{
enum FontCacheType
{
    kFontCacheGrey = 1,   // one coverage for each pixel
    kFontCacheLCD = 2,    // one coverage for each sub-pixel, a third of a pixel
    kFontCacheOutline = 3 // curves
};
}
