// SPDX-License-Identifier: GPL-3.0-or-later
// A picture into the pixels of a window: as it is, or fitted to another size.
#pragma once

#include "Tovrane/draw/IBlitTarget.h"

#include <cstdint>

namespace Tovra
{
// [any thread]  Both write whole rows without a gap, the highest first, words of 0xffRRGGBB. The picture has
// pixels.
void copyPicture(const BlitPicture& picture, std::uint32_t* target);
// Between the four nearest pixels.
void scalePicture(const BlitPicture& picture, std::uint32_t* target, int width, int height);
}
