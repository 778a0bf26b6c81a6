// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/BitmapRenditions.h"

#include "CORE/ForeignData.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/ImageResampling.h"
#include "Tovrane/draw/PNGStreams.h"

#include <cstring>

namespace Tovra
{
namespace
{
constexpr std::size_t mostBytesOfParts = std::size_t(16) << 20;

class MemoryStream : public ITovraPNGStream
{
public:
    explicit MemoryStream(const std::vector<unsigned char>& all) : bytes(all) {}

    bool read(unsigned char* target, unsigned long count) override
    {
        if (count > bytes.size() - position)
            return false;
        std::memcpy(target, bytes.data() + position, count);
        position += count;
        return true;
    }

private:
    const std::vector<unsigned char>& bytes;
    std::size_t position = 0;
};

std::vector<unsigned char> pngNamed(const std::string& name, bool fromFile)
{
    PNGFileStream file;
    PNGNewResourceStream resource;
    if (fromFile && file.open(name.c_str()))
        return file.readAll(Core::kLargestForeignSize);
    if (!fromFile && resource.open(name.c_str()))
        return resource.readAll();
    return {};
}
}

BitmapRenditions::BitmapRenditions() = default;

BitmapRenditions::~BitmapRenditions()
{
    clear();
}

void BitmapRenditions::clear()
{
    forgetParts();
    for (const Rendition& rendition : renditions)
        if (rendition.bitmap != nullptr)
            rendition.bitmap->forget();
    renditions.clear();
}

void BitmapRenditions::forgetParts()
{
    parts.clear();
    bytes = 0;
}

void BitmapRenditions::find(const char* name, bool fromFile)
{
    if (name == nullptr)
        return;
    for (const int scale : {2, 3})
        if (auto png = pngNamed(name + ("@" + std::to_string(scale) + "x"), fromFile); !png.empty())
            renditions.push_back({scale, std::move(png)});
}

// Null if it does not fit the base.
const PelmoAGG::Image* BitmapRenditions::decoded(Rendition& rendition, const PelmoAGG::Image& base)
{
    if (!rendition.png.empty())
    {
        const std::vector<unsigned char> png = std::move(rendition.png);
        rendition.png.clear();
        MemoryStream stream(png);
        rendition.bitmap = new CBitmap(nullptr, true);
        rendition.bitmap->loadScaled(stream, rendition.scale);
    }
    const PelmoAGG::Image& image = rendition.bitmap->getImage();
    const unsigned scale = unsigned(rendition.scale);
    const bool fits =
        image.getWidth() == base.getWidth() * scale && image.getHeight() == base.getHeight() * scale;
    return fits ? &image : nullptr;
}

const PelmoAGG::Image& BitmapRenditions::choose(const PelmoAGG::Image& base, double scale)
{
    const PelmoAGG::Image* best = &base;
    for (Rendition& rendition : renditions)
    {
        if (best->getScale() >= scale)
            break;
        if (const PelmoAGG::Image* larger = decoded(rendition, base))
            best = larger;
    }
    return *best;
}

const PelmoAGG::Image& BitmapRenditions::resample(const PelmoAGG::Image& image, agg::rect_i part,
                                                  unsigned width, unsigned height, double scale)
{
    static const PelmoAGG::Image none;
    if (width == 0 || height == 0 || !image.getPixels() ||
        !part.clip({0, 0, int(image.getWidth()) - 1, int(image.getHeight()) - 1}))
        return none;
    const Part key{image.getPixels(), part.x1, part.y1, part.x2, part.y2, width, height, scale};
    if (const auto known = parts.find(key); known != parts.end())
        return known->second.image;

    auto pixels = std::make_unique<CMACBitmap>();
    if (!pixels->setSize(width, height))
        return none;
    if (bytes + pixels->getTotalBytes() > mostBytesOfParts)
        forgetParts();
    bytes += pixels->getTotalBytes();
    Resampled& made = parts[key];
    made.pixels = std::move(pixels);
    made.image.attach(made.pixels->getPixelPtr(), width, height, made.pixels->getRowBytes(), scale);
    resampleImage(image, part, made.image);
    return made.image;
}
}
