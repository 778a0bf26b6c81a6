// SPDX-License-Identifier: GPL-3.0-or-later
// Saves a finished picture as a PNG file.
#pragma once

#include <vector>

namespace Tovra
{
class IOSBitmap;

// [any thread]  The bytes of the file, with red, green and blue as a window shows them, without alpha. Empty
// if the picture has no pixels, or if there is not enough memory.
std::vector<unsigned char> writePNG(IOSBitmap& picture);
// [any thread]  One picture of several below one another, which are equally wide.
std::vector<unsigned char> writePNG(const std::vector<IOSBitmap*>& pictures);
}
