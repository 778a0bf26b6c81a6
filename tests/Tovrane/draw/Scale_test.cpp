// SPDX-License-Identifier: GPL-3.0-or-later
// One number of pixels to a unit: shapes, texts and pictures follow it, and stay crisp.
#include "Tovrane/base/Kept.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/DrawnPicture.h"
#include "Tovrane/draw/PNGWriter.h"
#include "Tovrane/draw/PixelGrid.h"
#include "support/TempFolder.h"

#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <random>

using namespace Tovra;

namespace
{
constexpr double fractionalScales[] = {0.75, 1.1, 1.25, 1.5, 1.75, 2.5, 2.75};

struct ScaledPicture : DrawnPicture
{
    ScaledPicture(int unitsWide, int unitsHigh, double scale)
        : DrawnPicture(int(std::ceil(unitsWide * scale)), int(std::ceil(unitsHigh * scale)))
    {
        renderer.scale(scale);
        renderer.attach(memory.data(), unsigned(width), unsigned(height), width * 4);
        renderer.noFill();
        renderer.lineColor(255, 255, 255);
    }

    // How many pixels of a column have each green value but 0.
    std::map<int, int> greens(int x) const
    {
        std::map<int, int> counts;
        for (int y = 0; y < height; ++y)
            if (const int green = at(x, y).green; green > 0)
                ++counts[green];
        return counts;
    }
};

// One layer: the edges of two would mix differently in larger pixels. Corners are rounder than lines are
// wide, so that no line overlaps itself.
void drawSomething(PelmoAGG& to, unsigned seed)
{
    std::mt19937 random(seed);
    const auto any = [&random](double most) { return double(random() % 1000) / 1000.0 * most; };
    to.fillColor(255, unsigned(any(255)), 90);
    to.noLine();
    to.lineWidth(any(4));
    if (seed % 2 == 0)
    {
        to.noFill();
        to.lineColor(90, unsigned(any(255)), 255);
    }
    const double left = any(20), top = any(20), right = left + 8 + any(20), bottom = top + 8 + any(20);
    switch (seed % 5)
    {
    case 0:
        return to.rectangle(left, top, right, bottom);
    case 1:
        return to.roundedRect(left, top, right, bottom, 4 + any(3));
    case 2:
        return to.ellipse((left + right) / 2, (top + bottom) / 2, (right - left) / 2, (bottom - top) / 2);
    case 3:
        to.noLine();
        to.fillLinearGradient(left, top, right, bottom, {0, 0, 0, 255}, {255, 255, 255, 255}, 1.0);
        [[fallthrough]];
    default:
        return to.arc(24, 24, any(12) + 8, any(12) + 8, 1.0, any(4) + 1);
    }
}

// Of as many pixels as units, each of which the average of scale x scale pixels is compared with.
double largestDifference(const DrawnPicture& plain, const DrawnPicture& scaled, int scale)
{
    double largest = 0.0;
    for (int y = 0; y < plain.height; ++y)
        for (int x = 0; x < plain.width; ++x)
        {
            double blue = 0.0, green = 0.0, red = 0.0;
            for (int i = 0; i < scale * scale; ++i)
            {
                const Pixel p = scaled.at(x * scale + i % scale, y * scale + i / scale);
                blue += p.blue;
                green += p.green;
                red += p.red;
            }
            const Pixel p = plain.at(x, y);
            const double pixels = scale * scale;
            largest = std::max({largest, std::fabs(blue / pixels - p.blue),
                                std::fabs(green / pixels - p.green), std::fabs(red / pixels - p.red)});
        }
    return largest;
}

// A picture of one green in a file.
void save(const std::string& path, unsigned width, unsigned height, unsigned char green)
{
    CMACBitmap picture;
    ASSERT_TRUE(picture.setSize(width, height));
    for (unsigned i = 1; i < picture.getTotalBytes(); i += 4)
        picture.getPixelPtr()[i] = green;
    const auto file = writePNG(picture);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(file.data()), long(file.size()));
}
}

TEST(Scale, AveragesToThePictureAtOneForWholeNumbers)
{
    for (unsigned seed = 0; seed < 60; ++seed)
        for (const int scale : {2, 3})
        {
            ScaledPicture plain(48, 48, 1.0), scaled(48, 48, scale);
            drawSomething(plain.renderer, seed);
            drawSomething(scaled.renderer, seed);
            EXPECT_LE(largestDifference(plain, scaled, scale), 2.5) << "seed " << seed << " at " << scale;
        }
}

TEST(Scale, KeepsUprightAndLevelLinesOnWholePixels)
{
    for (const double scale : fractionalScales)
        for (const double y : {4.0, 4.5, 5.3})
        {
            ScaledPicture lines(20, 20, scale), box(20, 20, scale), filled(20, 20, scale);
            lines.renderer.line(2, y, 18, y);
            box.renderer.rectangle(2.5, y, 17.5, y + 7);
            filled.renderer.noLine();
            filled.renderer.fillColor(255, 255, 255);
            filled.renderer.rectangle(2.5, y, 17.5, y + 1);
            const int whole = int(std::max(1.0, std::floor(scale + 0.5)));
            const int green = scale < 1.0 ? int(256 * scale) : 255;
            const int middle = int(10 * scale);
            EXPECT_EQ(lines.greens(middle), (std::map<int, int>{{green, whole}})) << scale << " at " << y;
            EXPECT_EQ(box.greens(middle), (std::map<int, int>{{green, 2 * whole}})) << scale << " at " << y;
            ASSERT_EQ(filled.greens(middle).size(), 1u);
            EXPECT_EQ(filled.greens(middle).begin()->first, green) << scale << " at " << y;
        }
    for (const double scale : {1.25, 2.0, 3.0}) // a thin one covers a part of one row
    {
        ScaledPicture thin(20, 20, scale);
        thin.renderer.lineWidth(0.25);
        thin.renderer.line(2, 10.5, 18, 10.5);
        const auto greens = thin.greens(int(10 * scale));
        ASSERT_EQ(greens.size(), 1u) << scale;
        EXPECT_EQ(greens.begin()->second, 1) << scale;
        EXPECT_NEAR(greens.begin()->first, 255 * 0.25 * scale, 1.0);
    }
}

TEST(Scale, MeasuresTextInUnits)
{
    const char* data = nullptr;
    long length = 0;
    ASSERT_TRUE(gNormalFont.getFont(data, length));
    DrawnPicture at(10, 10);
    at.renderer.font(gNormalFont.getName(), data, length, 12.0, kFontCacheLCD, 0.0);
    const double plain = at.renderer.textWidth("3840.00 ms / 100.00%");
    for (const double scale : {0.75, 1.25, 1.5, 2.0, 3.0})
    {
        at.renderer.scale(scale);
        EXPECT_NEAR(at.renderer.textWidth("3840.00 ms / 100.00%"), plain, 0.3) << scale;
    }
}

TEST(Scale, TakesTheRenditionThatFits)
{
    const TempFolder folder;
    const std::string name = folder / "dial.png";
    save(name, 8, 4, 40);
    save(name + "@2x", 16, 8, 80);
    save(name + "@3x", 25, 12, 120); // too wide, and so none
    const auto bitmap = Kept<CBitmap>::adopt(new CBitmap(name.c_str(), true));
    EXPECT_EQ(bitmap->getWidth(), 8.0);
    for (const auto& [scale, green] : {std::pair(1.0, 39), {1.25, 79}, {2.0, 79}, {3.0, 79}, {0.75, 39}})
    {
        ScaledPicture shown(20, 20, scale);
        CDrawContext context;
        context.setAGGRenderer(&shown.renderer);
        context.setClipRect({0, 0, 20, 20});
        bitmap->draw(&context, {4, 6, 12, 10}, {0, 0});
        const PixelGrid grid(scale);
        const double area = (grid.edge(12) - grid.edge(4)) *
                            (grid.edge(10) - grid.edge(6)); // of whole pixels, with no fringe
        EXPECT_EQ(shown.countOther(blackPixel), int(area)) << scale;
        EXPECT_EQ(shown.at(int(6 * scale), int(7 * scale)), (Pixel{0, green, 0, 255})) << scale;
        context.setAGGRenderer(nullptr);
    }
}
