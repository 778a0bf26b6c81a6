// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Golden.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <png.h>
#include <vector>

namespace fs = std::filesystem;

namespace
{
constexpr size_t channels = 3;

struct Picture
{
    unsigned width = 0;
    unsigned height = 0;
    std::vector<unsigned char> bytes; // blue, green, red
};

Picture withoutAlpha(const PictureMemory& memory)
{
    Picture picture{memory.width, memory.height, {}};
    picture.bytes.reserve(size_t(memory.width) * memory.height * channels);
    for (unsigned y = 0; y < memory.height; ++y)
        for (unsigned x = 0; x < memory.width; ++x)
        {
            const unsigned char* pixel = memory.pixels + long(y) * memory.rowBytes + long(x) * 4;
            picture.bytes.insert(picture.bytes.end(), pixel, pixel + channels);
        }
    return picture;
}

bool write(const fs::path& path, const Picture& picture)
{
    fs::create_directories(path.parent_path());
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = picture.width;
    png.height = picture.height;
    png.format = PNG_FORMAT_BGR;
    return png_image_write_to_file(&png, path.c_str(), 0, picture.bytes.data(), 0, nullptr) != 0;
}

bool read(const fs::path& path, Picture& picture)
{
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&png, path.c_str()))
        return false;
    png.format = PNG_FORMAT_BGR;
    picture = {png.width, png.height, std::vector<unsigned char>(PNG_IMAGE_SIZE(png))};
    return png_image_finish_read(&png, nullptr, picture.bytes.data(), 0, nullptr) != 0;
}

struct Difference
{
    int largest = 0;
    unsigned long pixels = 0;
    Picture map; // the golden picture, dark, with what differs in red
};

Difference compare(const Picture& golden, const Picture& actual, int tolerated)
{
    Difference difference;
    difference.map = golden;
    for (size_t at = 0; at < golden.bytes.size(); at += channels)
    {
        int largest = 0;
        for (size_t c = 0; c < channels; ++c)
        {
            largest = std::max(largest, std::abs(golden.bytes[at + c] - actual.bytes[at + c]));
            difference.map.bytes[at + c] = golden.bytes[at + c] / 4;
        }
        difference.largest = std::max(difference.largest, largest);
        if (largest <= tolerated)
            continue;
        ++difference.pixels;
        difference.map.bytes[at + 2] = 255;
    }
    return difference;
}

bool renews()
{
    const char* const mode = std::getenv("LODEX_GOLDEN");
    return mode && std::strcmp(mode, "renew") == 0;
}
}

testing::AssertionResult looksLikeGolden(const PictureMemory& picture, const std::string& name,
                                         PictureTolerance tolerance)
{
    const fs::path goldenFile = fs::path(LODEX_GOLDEN_FOLDER) / (name + ".png");
    const fs::path actualFile = fs::path(LODEX_PICTURE_FOLDER) / (name + ".png");
    const fs::path mapFile = fs::path(LODEX_PICTURE_FOLDER) / (name + "-difference.png");
    const Picture actual = withoutAlpha(picture);
    if (renews())
    {
        if (write(goldenFile, actual))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "cannot write " << goldenFile;
    }

    Picture golden;
    if (!read(goldenFile, golden))
    {
        write(actualFile, actual);
        return testing::AssertionFailure() << "there is no " << goldenFile << "; drawn was " << actualFile;
    }
    if (golden.width != actual.width || golden.height != actual.height)
    {
        write(actualFile, actual);
        return testing::AssertionFailure()
               << goldenFile << " is " << golden.width << " x " << golden.height << ", drawn was "
               << actual.width << " x " << actual.height << ", in " << actualFile;
    }
    const Difference difference = compare(golden, actual, tolerance.channel);
    if (difference.pixels <= tolerance.pixels)
        return testing::AssertionSuccess();
    write(actualFile, actual);
    write(mapFile, difference.map);
    return testing::AssertionFailure()
           << difference.pixels << " pixels differ from " << goldenFile << ", by up to " << difference.largest
           << "; see " << actualFile << " and " << mapFile;
}
