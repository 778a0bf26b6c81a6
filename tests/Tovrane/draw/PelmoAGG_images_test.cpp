// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/DrawnPicture.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <random>

using namespace Tovra;

// Premultiplied noise with runs of opaque and of transparent pixels, and, if wanted, of translucent ones.
static void fillWithNoise(DrawnPicture& picture, unsigned seed, bool translucent = true)
{
    std::mt19937 random(seed);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
        {
            const int run = y % 2 ? 3 : 25;
            const int kind = (x / run + y + int(random() % 2 && run == 3)) % (translucent ? 3 : 2);
            const int alpha = kind == 0 ? 255 : (kind == 1 ? 0 : int(random() % 256));
            const auto color = [&] { return int(random() % unsigned(alpha + 1)); };
            picture.set(x, y, {color(), color(), color(), alpha});
        }
}

TEST(PelmoAGGImage, BlendsPremultiplied)
{
    struct Case
    {
        unsigned alpha;
        Pixel source, below, result;
    };
    const Case cases[] = {
        {255, {100, 50, 0, 128}, {200, 200, 200, 255}, {199, 149, 99, 255}},
        {255, {100, 50, 0, 128}, {0, 0, 0, 0}, {100, 50, 0, 129}},
        {255, {0, 0, 0, 0}, {9, 8, 7, 6}, {9, 8, 7, 6}},
        {255, {254, 3, 2, 255}, {9, 8, 7, 6}, {254, 3, 2, 255}},
        {127, {100, 50, 0, 128}, {200, 200, 200, 255}, {199, 174, 149, 255}},
        {127, {254, 254, 254, 255}, {0, 0, 0, 0}, {127, 127, 127, 128}},
        {0,
         {0, 0, 0, 0},
         {200, 100, 0, 255},
         {199, 99, 0, 255}}, // the shift darkens what is below a faded picture
    };
    for (const Case& c : cases)
    {
        DrawnPicture picture(37, 1), source(37, 1);
        picture.fill(c.below);
        source.fill(c.source);
        picture.renderer.blendImage(source.image(), 0, 0, c.alpha);
        for (int x = 0; x < 37; ++x) // groups, pairs and a single pixel
            EXPECT_EQ(picture.at(x, 0), c.result) << "alpha " << c.alpha << ", source " << c.source;
    }
}

TEST(PelmoAGGImage, PutsEveryPixelWhereItBelongs)
{
    DrawnPicture source(17, 13), start(23, 19);
    fillWithNoise(source, 1, false);
    fillWithNoise(start, 2);
    std::mt19937 random(3);
    const auto pick = [&random](int from, int to) { return from + int(random() % unsigned(to - from + 1)); };
    for (int run = 0; run < 300; ++run)
    {
        const int x1 = pick(-6, 16), y1 = pick(-6, 12), x2 = pick(x1, 22), y2 = pick(y1, 18);
        const int toX = pick(-12, 22), toY = pick(-12, 18);
        const int clip[4] = {pick(0, 12), pick(0, 9), pick(13, 22), pick(10, 18)};
        DrawnPicture picture(23, 19);
        picture.memory = start.memory;
        picture.renderer.clipBox(clip[0], clip[1], clip[2], clip[3]);
        picture.renderer.blendImage(source.image(), x1, y1, x2, y2, toX, toY, 255);

        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x)
            {
                const int fromX = x - toX + x1, fromY = y - toY + y1;
                const bool drawn = x >= clip[0] && x <= clip[2] && y >= clip[1] && y <= clip[3] &&
                                   fromX >= std::max(x1, 0) && fromX <= std::min(x2, 16) &&
                                   fromY >= std::max(y1, 0) && fromY <= std::min(y2, 12);
                const bool isOpaque = drawn && source.at(fromX, fromY).alpha == 255;
                ASSERT_EQ(picture.at(x, y), isOpaque ? source.at(fromX, fromY) : start.at(x, y))
                    << "run " << run << " at " << x << ", " << y;
            }
    }
}

TEST(PelmoAGGImage, MovesAPartOfItsOwnPicture)
{
    for (const auto& [dx, dy] :
         {std::pair(1, 0), {-1, 0}, {0, 1}, {0, -1}, {3, 2}, {-3, 2}, {3, -2}, {-3, -2}})
        for (unsigned alpha : {255u, 100u})
        {
            DrawnPicture picture(75, 11), copy(75, 11), expected(75, 11);
            fillWithNoise(picture, 4);
            copy.memory = expected.memory = picture.memory;
            picture.renderer.blendImage(picture.image(), 3, 3, 71, 7, 3 + dx, 3 + dy, alpha);
            expected.renderer.blendImage(copy.image(), 3, 3, 71, 7, 3 + dx, 3 + dy, alpha);
            EXPECT_EQ(picture.memory, expected.memory) << "by " << dx << ", " << dy << ", alpha " << alpha;
        }
}

TEST(PelmoAGGImage, TruncatesCoordinatesAndScalesTheAlphaByTheMaster)
{
    DrawnPicture picture(4, 1), source(4, 1);
    source.fill(whitePixel);
    picture.renderer.masterAlpha(0.5);
    picture.renderer.blendImage(source.image(), 0.5, 0.5, 1.5, 0.9, 1.9, 0.7, 255);
    EXPECT_EQ(picture.at(0, 0), blackPixel);
    EXPECT_EQ(picture.at(1, 0), (Pixel{127, 127, 127, 255}));
    EXPECT_EQ(picture.at(2, 0), (Pixel{127, 127, 127, 255}));
    EXPECT_EQ(picture.at(3, 0), blackPixel);
}

TEST(PelmoAGGImage, RepeatsPixelsWithoutAFilter)
{
    DrawnPicture source(3, 2), picture(9, 6);
    fillWithNoise(source, 5);
    picture.renderer.imageFilter(kFilterNone);
    picture.renderer.blendMode(kBlendSrc);
    picture.renderer.transformImage(source.image(), 0, 0, 3, 2, 0, 0, 9, 6);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 9; ++x)
            EXPECT_EQ(picture.at(x, y), source.at(x / 3, y / 3)) << x << ", " << y;
}

// A direct computation: triangular weights; neighbours outside of the line count as the nearest one inside.
static std::vector<double> slowBlur(const std::vector<double>& line, int radius)
{
    std::vector<double> result(line.size());
    const int last = int(line.size()) - 1;
    for (int at = 0; at <= last; ++at)
    {
        double sum = 0.0;
        for (int i = -radius; i <= radius; ++i)
            sum += (radius + 1 - std::abs(i)) * line[size_t(std::clamp(at + i, 0, last))];
        result[size_t(at)] = std::floor(sum / ((radius + 1.0) * (radius + 1.0)));
    }
    return result;
}

TEST(PelmoAGGImage, BlursAsTheSlowWayDoes)
{
    constexpr int left = 3, top = 2, right = 27, bottom = 24;
    for (const auto& [radiusX, radiusY] : {std::pair(1, 0), {0, 1}, {4, 2}, {9, 30}, {254, 254}})
        for (size_t channel = 0; channel < 4; ++channel)
        {
            DrawnPicture picture(31, 27);
            fillWithNoise(picture, 6);
            std::vector<double> expected(picture.memory.begin(), picture.memory.end());
            const auto blurLine = [&expected](size_t first, size_t step, int length, int radius)
            {
                std::vector<double> line;
                for (int i = 0; i < length; ++i)
                    line.push_back(expected[first + size_t(i) * step]);
                line = slowBlur(line, radius);
                for (int i = 0; i < length; ++i)
                    expected[first + size_t(i) * step] = line[size_t(i)];
            };
            const auto byteAt = [&](int x, int y) { return size_t(y * 31 + x) * 4 + channel; };
            for (int y = top; y <= bottom; ++y)
                blurLine(byteAt(left, y), 4, right - left + 1, radiusX);
            for (int x = left; x <= right; ++x)
                blurLine(byteAt(x, top), 31 * 4, bottom - top + 1, radiusY);

            picture.renderer.blurRect(left, top, right, bottom, radiusX, radiusY);
            for (int y = 0; y < 27; ++y)
                for (int x = 0; x < 31; ++x)
                    ASSERT_NEAR(picture.memory[byteAt(x, y)], expected[byteAt(x, y)], radiusX > 99 ? 2 : 1)
                        << radiusX << " x " << radiusY << " at " << x << ", " << y;
        }
}

TEST(PelmoAGGImage, BlursByWholeRadiiUpTo254InsideThePicture)
{
    const auto blur = [](double x1, double y1, double x2, double y2, double radius)
    {
        DrawnPicture picture(40, 20);
        fillWithNoise(picture, 7);
        picture.renderer.clipBox(0, 0, 2, 2); // is ignored
        picture.renderer.blurRect(x1, y1, x2, y2, radius, radius);
        return picture.memory;
    };
    const auto untouched = blur(0, 0, 39, 19, 0);
    EXPECT_EQ(blur(0, 0, 39, 19, 300), blur(0, 0, 39, 19, 254));
    EXPECT_EQ(blur(0, 0, 39, 19, 1e300), blur(0, 0, 39, 19, 254));
    EXPECT_EQ(blur(0, 0, 39, 19, 2.5), blur(0, 0, 39, 19, 3));
    EXPECT_EQ(blur(0, 0, 39, 19, 0.4), untouched);
    EXPECT_EQ(blur(0, 0, 39, 19, -3), untouched);
    EXPECT_EQ(blur(5, 5, 5, 15, 3), untouched) << "one column";
    EXPECT_EQ(blur(40, 0, 60, 19, 3), untouched) << "outside";
    EXPECT_EQ(blur(-50, -1e9, 1e9, 100, 3), blur(0, 0, 39, 19, 3));
    EXPECT_NE(blur(0, 0, 39, 19, 3), untouched);
}
