// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/Packing.h"
#include "Orbel/storage/ResourceStore.h"
#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PNGWriter.h"
#include "support/Bytes.h"
#include "support/Png.h"
#include "support/PngBytes.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

using Tovra::CBitmap;
using Tovra::CMACBitmap;
using Tovra::CPoint;
using Tovra::CRect;
using Bytes = std::vector<int>;

namespace
{
Bytes pixels(const CBitmap& bitmap)
{
    const auto* from = bitmap.getOSBitmap()->getPixelPtr();
    return from ? Bytes(from, from + bitmap.getOSBitmap()->getTotalBytes()) : Bytes();
}

// Blue, green, red, alpha.
Bytes decoded(const std::string& file)
{
    CBitmap bitmap(nullptr, true);
    PngBytes stream(file);
    EXPECT_TRUE(bitmap.loadFromStream(&stream));
    EXPECT_TRUE(bitmap.isLoaded());
    return pixels(bitmap);
}

Png row(int colorType, unsigned width, std::vector<unsigned char> samples, int bitDepth = 8)
{
    return {.width = width,
            .height = 1,
            .colorType = colorType,
            .samples = std::move(samples),
            .bitDepth = bitDepth};
}

// Each pixel is opaque, with a blue of 10 x row + column after premultiplication.
Png numbered(unsigned width, unsigned height)
{
    Png png{.width = width, .height = height};
    for (unsigned y = 0; y < height; ++y)
        for (unsigned x = 0; x < width; ++x)
        {
            const unsigned wanted = 10 * y + x;
            png.samples.insert(png.samples.end(),
                               {0, 0, static_cast<unsigned char>((wanted * 256 + 254) / 255), 255});
        }
    return png;
}

std::string withHeader(std::string file, std::uint32_t width, std::uint32_t height)
{
    Core::writeBig32(&file[16], width);
    Core::writeBig32(&file[20], height);
    return withRightCheckSums(std::move(file));
}

std::string resourceBlock(const char* name, std::string data)
{
    const std::string entry = padded(name, 256, '\0') + littleWord(std::uint32_t(data.size())) +
                              littleWord(0xffffffff) + littleWord(0);
    const std::string index = Orbel::pack(entry, 1000).value();
    Orbel::scramble(data);
    return std::string("RESOURCE2\0??", 12) + littleWord(20) + littleWord(8192) +
           littleWord(std::uint32_t(data.size())) + littleWord(std::uint32_t(20 + index.size())) +
           littleWord(268) + littleWord(std::uint32_t(index.size())) + littleWord(1) + index + data;
}
}

TEST(CBitmap, DecodesEveryKindOfPngToPremultipliedBlueGreenRed)
{
    Png palette = row(PNG_COLOR_TYPE_PALETTE, 2, {0, 1});
    palette.palette = {{10, 20, 30}, {255, 0, 128}};
    Png faded = palette;
    faded.paletteAlpha = {0, 128};
    Png keyed = row(PNG_COLOR_TYPE_GRAY, 2, {100, 200});
    keyed.transparentGrey = 200;

    const struct
    {
        const char* what;
        std::string file;
        Bytes out;
    } cases[] = {
        {"white loses one by the shift", row(PNG_COLOR_TYPE_RGB, 1, {255, 255, 255}), {254, 254, 254, 255}},
        {"RGB", row(PNG_COLOR_TYPE_RGB, 2, {1, 2, 3, 200, 100, 50}), {2, 1, 0, 255, 49, 99, 199, 255}},
        {"RGBA",
         row(PNG_COLOR_TYPE_RGB_ALPHA, 3, {200, 100, 50, 128, 255, 255, 255, 0, 200, 100, 50, 1}),
         {25, 50, 100, 128, 0, 0, 0, 0, 0, 0, 0, 1}},
        {"16 bits lose the low bytes",
         row(PNG_COLOR_TYPE_RGB, 1, {200, 255, 100, 255, 50, 255}, 16),
         {49, 99, 199, 255}},
        {"grey", row(PNG_COLOR_TYPE_GRAY, 2, {0, 128}), {0, 0, 0, 255, 127, 127, 127, 255}},
        {"grey of 1 bit",
         row(PNG_COLOR_TYPE_GRAY, 3, {0xa0}, 1),
         {254, 254, 254, 255, 0, 0, 0, 255, 254, 254, 254, 255}},
        {"grey with alpha", row(PNG_COLOR_TYPE_GRAY_ALPHA, 1, {200, 64}), {50, 50, 50, 64}},
        {"grey with a transparent one", keyed, {99, 99, 99, 255, 0, 0, 0, 0}},
        {"a palette keeps red first", palette, {9, 19, 29, 255, 254, 0, 127, 255}},
        {"a palette with alpha", faded, {0, 0, 0, 0, 127, 0, 64, 128}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(decoded(c.file), c.out) << c.what;

    Png interlaced = numbered(9, 9);
    interlaced.interlaced = true;
    EXPECT_EQ(decoded(interlaced), decoded(numbered(9, 9)));
}

TEST(CBitmap, ShowsADamagedPictureAsFarAsItCame)
{
    Png noise{.width = 128, .height = 64}; // does not compress: every part of the file has some rows
    std::mt19937 random(1);
    for (unsigned i = 0; i < 128 * 64 * 4; ++i)
        noise.samples.push_back(static_cast<unsigned char>(random() | 1));
    const std::string whole = noise;
    for (size_t length = 0; length < whole.size(); length += 997)
    {
        const Bytes out = decoded(whole.substr(0, length));
        if (length < 33)
            EXPECT_TRUE(out.empty()) << length << ": no size is known yet";
        else
            EXPECT_EQ(out.size(), noise.samples.size()) << length;
    }
    const Bytes half = decoded(whole.substr(0, whole.size() / 2));
    EXPECT_EQ(half[2], noise.samples[0]) << "the first row is there, and not premultiplied";
    EXPECT_EQ(half[3], noise.samples[3]);
    EXPECT_EQ(half[half.size() - 1], 0) << "the last one is not";
    EXPECT_TRUE(decoded("").empty());
    EXPECT_TRUE(decoded("this is no picture at all, but long enough for a header").empty());
}

TEST(CBitmap, RefusesWhatIsTooLarge)
{
    const std::string small = row(PNG_COLOR_TYPE_RGB, 1, {1, 2, 3});
    for (const auto& [w, h] : {std::pair(8193u, 1u), {1u, 8193u}, {8192u, 8192u}, {0x7fffffffu, 0x7fffffffu}})
    {
        CBitmap bitmap(nullptr, true);
        PngBytes stream(withHeader(small, w, h));
        EXPECT_TRUE(bitmap.loadFromStream(&stream));
        EXPECT_EQ(bitmap.getWidth(), 0.0) << w << " x " << h;
        EXPECT_EQ(bitmap.getOSBitmap()->getPixelPtr(), nullptr);
        EXPECT_EQ(bitmap.getImage().getPixels(), nullptr);
    }
    EXPECT_EQ(decoded(withHeader(small, 8192, 1)).size(), 8192u * 4) << "just within, as far as it came";
}

TEST(CBitmap, ComesFromFilesAndResources)
{
    const TempFolder folder;
    const std::string file = numbered(4, 3);
    const std::string path = folder.put("a.png", file);
    CBitmap bitmap(path.c_str(), true);
    EXPECT_EQ(bitmap.getWidth(), 4.0);
    EXPECT_EQ(bitmap.getHeight(), 3.0);

    const std::string missing = folder / "b.png";
    EXPECT_FALSE(bitmap.loadFromPath(missing.c_str()));
    EXPECT_FALSE(bitmap.loadFromPath(nullptr));
    EXPECT_FALSE(bitmap.isLoaded());
    EXPECT_EQ(bitmap.getWidth(), 0.0);
    EXPECT_TRUE(bitmap.loadFromPath(path.c_str()));

    const std::string block = resourceBlock("Background.png", file);
    EXPECT_FALSE(bitmap.loadFromNewResource("Background.png")) << "nothing is bound";
    SetResourcePtr(block.data(), long(block.size()));
    EXPECT_TRUE(bitmap.loadFromNewResource("Background.png"));
    EXPECT_EQ(pixels(bitmap), decoded(file));
    EXPECT_FALSE(bitmap.loadFromNewResource("background.png"));
    FreeResources();
}

TEST(PNGWriter, WritesWhatAWindowShows)
{
    CMACBitmap picture;
    EXPECT_TRUE(Tovra::writePNG(picture).empty());
    picture.setSize(1, 2);
    const Bytes shown = {49, 99, 199, 0, 1, 2, 3, 77}; // with any alpha
    std::copy(shown.begin(), shown.end(), picture.getPixelPtr());
    for (const bool flipped : {false, true})
    {
        picture.setFlipped(flipped);
        const auto file = Tovra::writePNG(picture);
        const Bytes out = decoded(std::string(file.begin(), file.end())); // premultiplied by 255 of 256
        EXPECT_EQ(out, flipped ? Bytes({0, 1, 2, 255, 48, 98, 198, 255})
                               : Bytes({48, 98, 198, 255, 0, 1, 2, 255}));
    }
}

class DrawnBitmap : public testing::Test
{
protected:
    DrawnBitmap()
    {
        target.setSize(8, 8);
        renderer.attach(target.getPixelPtr(), 8, 8, target.getRowBytes());
        context->setAGGRenderer(&renderer);
        clip({0, 0, 9, 9});
        PngBytes stream(numbered(6, 6));
        bitmap.loadFromStream(&stream);
    }
    ~DrawnBitmap() override
    {
        context->setAGGRenderer(nullptr);
        context->forget();
    }

    void clip(const CRect& rect)
    {
        context->setClipRect(rect);
        renderer.clearAll(0, 0, 0, 0);
    }
    // The blue of each pixel of a row; 0 where nothing was drawn.
    Bytes blues(int y)
    {
        Bytes row;
        for (int x = 0; x < 8; ++x)
            row.push_back(target.getPixelPtr()[y * target.getRowBytes() + x * 4]);
        return row;
    }
    bool untouched()
    {
        const auto* from = target.getPixelPtr();
        return Bytes(from, from + target.getTotalBytes()) == Bytes(target.getTotalBytes());
    }

    Tovra::CMACBitmap target;
    Tovra::PelmoAGG renderer;
    Tovra::CDrawContext* context = new Tovra::CDrawContext();
    CBitmap bitmap{nullptr, true};
};

TEST_F(DrawnBitmap, ShowsThePartFromItsOffset)
{
    bitmap.draw(context, CRect(1, 2, 4, 4), CPoint(2, 3)); // 3 x 2
    EXPECT_EQ(blues(1), Bytes(8));
    EXPECT_EQ(blues(2), Bytes({0, 32, 33, 34, 0, 0, 0, 0}));
    EXPECT_EQ(blues(3), Bytes({0, 42, 43, 44, 0, 0, 0, 0}));
    EXPECT_EQ(blues(4), Bytes(8));

    clip({0, 0, 9, 9});
    context->setOffset(CPoint(2, 1));
    bitmap.drawTransparent(context, CRect(1, 1, 10, 10), CPoint(0, 3)); // the lower half
    EXPECT_EQ(blues(1), Bytes(8));
    EXPECT_EQ(blues(2), Bytes({0, 0, 0, 30, 31, 32, 33, 34}));
    EXPECT_EQ(blues(4), Bytes({0, 0, 0, 50, 51, 52, 53, 54}));
    EXPECT_EQ(blues(5), Bytes(8));
}

TEST_F(DrawnBitmap, LeavesTheLastRowAndColumnOfTheClipFree)
{
    const CRect clipRect(1, 1, 4, 3);
    clip(clipRect);
    bitmap.draw(context, CRect(0, 0, 6, 6), CPoint());
    EXPECT_EQ(blues(0), Bytes(8));
    EXPECT_EQ(blues(1)[0], 0);
    EXPECT_EQ(blues(1)[1], 11);
    EXPECT_EQ(blues(1)[4], 0);
    EXPECT_EQ(blues(3), Bytes(8));
    EXPECT_EQ(context->getClipRect(), clipRect) << "given back";

    for (const CRect& narrow : {CRect(1, 1, 2, 8), CRect(1, 1, 8, 2), CRect(3, 3, 3, 3)})
    {
        clip(narrow);
        bitmap.draw(context, CRect(0, 0, 6, 6), CPoint());
        bitmap.drawAlphaBlend(context, CRect(0, 0, 6, 6), CPoint(), 255);
        bitmap.drawScaled(context, CRect(0, 0, 6, 6), CRect(0, 0, 6, 6));
        EXPECT_TRUE(untouched());
        EXPECT_EQ(context->getClipRect(), narrow);
    }
}

TEST_F(DrawnBitmap, LiesOnWholePixelsWhenItIsBlended)
{
    for (const double fraction : {0.0, 0.3, 0.9})
    {
        clip({0, 0, 9, 9});
        bitmap.drawAlphaBlend(context, CRect(2 + fraction, 3 + fraction, 5 + fraction, 5 + fraction),
                              CPoint(1, 1), 255);
        EXPECT_EQ(blues(3), Bytes({0, 0, 11, 12, 13, 0, 0, 0})) << fraction;
        EXPECT_EQ(blues(4), Bytes({0, 0, 21, 22, 23, 0, 0, 0})) << fraction;
        EXPECT_EQ(blues(5), Bytes(8));
    }
    clip({0, 0, 9, 9});
    bitmap.drawAlphaBlend(context, CRect(0, 0, 1, 1), CPoint(4, 4), 127); // half of 44
    EXPECT_EQ(blues(0)[0], 22);
}

TEST_F(DrawnBitmap, ScalesAPartOverTheTarget)
{
    renderer.attach(bitmap.getOSBitmap()->getPixelPtr(), 6, 6, bitmap.getOSBitmap()->getRowBytes());
    renderer.clearAll(0, 0, 200, 255);
    renderer.attach(target.getPixelPtr(), 8, 8, target.getRowBytes());
    bitmap.drawScaled(context, CRect(0, 0, 6, 6), CRect(0, 0, 8, 8));
    for (const int y : {2, 4, 5})
        for (const int x : {2, 4, 5})
            EXPECT_NEAR(blues(y)[size_t(x)], 200, 1) << x << ", " << y;
}

TEST_F(DrawnBitmap, CanBeDrawnInto)
{
    auto* inside = bitmap.getDrawContext();
    ASSERT_NE(inside, nullptr);
    inside->setClipRect(CRect(0, 0, 6, 6));
    inside->setFillColor({0, 0, 250, 255});
    inside->setFrameColor({0, 0, 250, 255});
    inside->drawRect(CRect(1, 1, 3, 3), Tovra::kFilled);
    EXPECT_EQ(pixels(bitmap).at((2 * 6 + 2) * 4), 250);
}

TEST(CMACBitmap, MakesCleanPixelsOfTheSizeAskedFor)
{
    CMACBitmap bitmap;
    const struct
    {
        unsigned w, h, width, height;
    } cases[] = {{3, 2, 3, 2}, {0, 5, 1, 5}, {7, 0, 7, 1}, {4096, 4096, 4096, 4096}, {3, 2, 3, 2}};
    for (const auto& c : cases)
    {
        ASSERT_TRUE(bitmap.setSize(c.w, c.h));
        EXPECT_EQ(bitmap.getWidth(), c.width);
        EXPECT_EQ(bitmap.getHeight(), c.height);
        EXPECT_EQ(bitmap.getRowBytes(), int(c.width * 4));
        unsigned char* const pixels = bitmap.getPixelPtr();
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pixels) % 16, 0u);
        EXPECT_TRUE(std::all_of(pixels, pixels + bitmap.getTotalBytes(), [](int byte) { return byte == 0; }));
        std::fill_n(pixels, bitmap.getTotalBytes(), static_cast<unsigned char>(0xff));
    }
}

TEST(CMACBitmap, HasNoPixelsWhereTheyWouldBeTooMany)
{
    CMACBitmap bitmap;
    for (const auto& [w, h] :
         {std::pair(4097u, 4096u), {1000000000u, 1u}, {0xffffffffu, 0xffffffffu}, {0x40000001u, 4u}})
    {
        ASSERT_TRUE(bitmap.setSize(2, 2));
        EXPECT_FALSE(bitmap.setSize(w, h));
        EXPECT_EQ(bitmap.getPixelPtr(), nullptr);
        EXPECT_EQ(bitmap.getTotalBytes(), 0u);
    }
}
