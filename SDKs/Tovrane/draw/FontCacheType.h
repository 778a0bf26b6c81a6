// How the glyphs of a font are kept and drawn.
#pragma once

namespace Tovra
{
enum FontCacheType
{
    kFontCacheGrey = 1,   // coverage in steps of 1/256
    kFontCacheLCD = 2,    // the same for each third of a pixel
    kFontCacheOutline = 3 // curves
};
}
