// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/PNGWriter.h"

#include "Tovrane/draw/IOSBitmap.h"

#include <cstddef>
#include <png.h>

namespace Tovra
{
constexpr std::size_t bytesOfColor = 3;

// Adds blue, green and red of each pixel, from the top row down.
static void addWithoutAlpha(std::vector<unsigned char>& colors, IOSBitmap& picture)
{
    const std::size_t height = picture.getHeight();
    for (std::size_t y = 0; y < height; ++y)
    {
        const std::size_t row = picture.isFlipped() ? height - 1 - y : y;
        const unsigned char* pixel = picture.getPixelPtr() + row * std::size_t(picture.getRowBytes());
        for (unsigned x = 0; x < picture.getWidth(); ++x, pixel += 4)
            colors.insert(colors.end(), pixel, pixel + bytesOfColor);
    }
}

std::vector<unsigned char> writePNG(IOSBitmap& picture)
{
    return writePNG(std::vector<IOSBitmap*>{&picture});
}

std::vector<unsigned char> writePNG(const std::vector<IOSBitmap*>& pictures)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    for (IOSBitmap* picture : pictures)
    {
        if (!picture->getPixelPtr() || (image.width != 0 && image.width != picture->getWidth()))
            return {};
        image.width = picture->getWidth();
        image.height += picture->getHeight();
    }
    if (image.height == 0)
        return {};
    image.format = PNG_FORMAT_BGR;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<unsigned char> file(size);
    std::vector<unsigned char> colors;
    colors.reserve(std::size_t(image.width) * image.height * bytesOfColor);
    for (IOSBitmap* picture : pictures)
        addWithoutAlpha(colors, *picture);
    if (!png_image_write_to_memory(&image, file.data(), &size, 0, colors.data(), 0, nullptr))
        return {};
    file.resize(size);
    return file;
}
}
