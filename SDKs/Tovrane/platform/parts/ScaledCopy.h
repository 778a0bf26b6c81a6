// SPDX-License-Identifier: GPL-3.0-or-later
// Copies a picture into the pixels of a window, as it is or fitted to another size.
#pragma once

#include "Tovrane/draw/IBlitTarget.h"

#include <cstdint>

namespace Tovra
{
// [any thread]  Both write rows from top to bottom, without gaps, as words of 0xffRRGGBB. The picture must
// not be empty.
void copyPicture(const BlitPicture& picture, std::uint32_t* target);
// Interpolates between the four nearest pixels.
void scalePicture(const BlitPicture& picture, std::uint32_t* target, int width, int height);
}
