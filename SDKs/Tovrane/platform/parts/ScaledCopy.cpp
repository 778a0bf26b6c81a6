// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/ScaledCopy.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace Tovra
{
namespace
{
const unsigned char* rowOf(const BlitPicture& picture, unsigned int y)
{
    const unsigned int stored = picture.flipped ? picture.height - 1 - y : y;
    return picture.pixels + std::ptrdiff_t(stored) * picture.rowBytes;
}

// Where a pixel of the target lies in the source: between two pixels, with a weight of 0 to 256 for the
// second.
struct Between
{
    unsigned int first;
    unsigned int second;
    unsigned int weight;
};

Between between(int at, int targetSize, unsigned int sourceSize)
{
    const double place = (at + 0.5) * sourceSize / targetSize - 0.5;
    const double inside = std::clamp(place, 0.0, double(sourceSize - 1));
    const auto first = static_cast<unsigned int>(inside);
    return {first, std::min(first + 1, sourceSize - 1),
            static_cast<unsigned int>(std::floor((inside - first) * 256.0 + 0.5))};
}

unsigned int mix(unsigned int a, unsigned int b, unsigned int weight)
{
    return a * (256 - weight) + b * weight;
}
}

void copyPicture(const BlitPicture& picture, std::uint32_t* target)
{
    for (unsigned int y = 0; y < picture.height; ++y, target += picture.width)
    {
        std::memcpy(target, rowOf(picture, y), std::size_t(picture.width) * 4);
        for (unsigned int x = 0; x < picture.width; ++x)
            target[x] |= 0xff000000u;
    }
}

void scalePicture(const BlitPicture& picture, std::uint32_t* target, int width, int height)
{
    std::vector<Between> columns;
    columns.reserve(std::size_t(std::max(width, 0)));
    for (int x = 0; x < width; ++x)
        columns.push_back(between(x, width, picture.width));
    for (int y = 0; y < height; ++y)
    {
        const Between row = between(y, height, picture.height);
        const unsigned char* upper = rowOf(picture, row.first);
        const unsigned char* lower = rowOf(picture, row.second);
        for (const Between& column : columns)
        {
            std::uint32_t word = 0xff000000u;
            for (unsigned int part = 0; part < 3; ++part)
            {
                const unsigned int left = column.first * 4 + part;
                const unsigned int right = column.second * 4 + part;
                const unsigned int value = mix(mix(upper[left], upper[right], column.weight),
                                               mix(lower[left], lower[right], column.weight), row.weight);
                word |= ((value + 0x8000u) >> 16) << (8 * part);
            }
            *target++ = word;
        }
    }
}
}
