// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PNGWriter.h"

#include "Tovrane/draw/IOSBitmap.h"

#include <cstddef>
#include <png.h>

namespace Tovra
{
constexpr std::size_t bytesOfColor = 3;

// Blue, green and red of each pixel, from the top row down.
static std::vector<unsigned char> withoutAlpha(IOSBitmap& picture)
{
    const std::size_t height = picture.getHeight();
    std::vector<unsigned char> colors;
    colors.reserve(picture.getWidth() * height * bytesOfColor);
    for (std::size_t y = 0; y < height; ++y)
    {
        const std::size_t row = picture.isFlipped() ? height - 1 - y : y;
        const unsigned char* pixel = picture.getPixelPtr() + row * std::size_t(picture.getRowBytes());
        for (unsigned x = 0; x < picture.getWidth(); ++x, pixel += 4)
            colors.insert(colors.end(), pixel, pixel + bytesOfColor);
    }
    return colors;
}

std::vector<unsigned char> writePNG(IOSBitmap& picture)
{
    if (!picture.getPixelPtr())
        return {};
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = picture.getWidth();
    image.height = picture.getHeight();
    image.format = PNG_FORMAT_BGR;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<unsigned char> file(size);
    const std::vector<unsigned char> colors = withoutAlpha(picture);
    if (!png_image_write_to_memory(&image, file.data(), &size, 0, colors.data(), 0, nullptr))
        return {};
    file.resize(size);
    return file;
}
}
