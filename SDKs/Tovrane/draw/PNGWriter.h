// A finished picture as a PNG file.
#pragma once

#include <vector>

namespace Tovra
{
class IOSBitmap;

// [any thread]  Red, green and blue as a window would show them, without alpha. Empty if the picture has no
// pixels, or if there is not enough memory.
std::vector<unsigned char> writePNG(IOSBitmap& picture);
}
