// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/DrawnPicture.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <algorithm>
#include <limits>
#include <numbers>

using namespace Tovra;

static void drawNoLines(PelmoAGG& agg)
{
    agg.fillColor(255, 255, 255);
    agg.noLine();
}

// The gallery shows the plain cases.
TEST(PelmoAGG, FillsWhatAShapeCovers)
{
    const double pi = std::numbers::pi;
    struct Case
    {
        const char* what;
        void (*draw)(PelmoAGG& agg);
        double area;
        double tolerance;
    };
    const Case cases[] = {
        {"rectangle of negative width", [](PelmoAGG& a) { a.rectangle(40, 20, 10, 35); }, 30 * 15, 0.0},
        {"rectangle of half pixels", [](PelmoAGG& a) { a.rectangle(10.5, 20.5, 40.5, 35.5); }, 30 * 15, 0.5},
        {"radius above half of the side", [](PelmoAGG& a) { a.roundedRect(10, 10, 90, 50, 1e6); },
         80 * 40 - (4 - pi) * 400, 5.0},
        {"quarter, closed by a chord", [](PelmoAGG& a) { a.arc(50, 50, 40, 40, 0.0, std::numbers::pi / 2); },
         pi * 400 - 800, 2.0},
    };
    for (const Case& c : cases)
    {
        DrawnPicture picture(100, 100);
        drawNoLines(picture.renderer);
        c.draw(picture.renderer);
        EXPECT_NEAR(picture.area(), c.area, c.tolerance) << c.what;
    }
    for (double width : {0.0, -2.0})
    {
        DrawnPicture picture(20, 20);
        picture.renderer.lineColor(255, 255, 255);
        picture.renderer.lineWidth(width);
        picture.renderer.line(0, 10, 20, 10);
        EXPECT_EQ(picture.countOther(blackPixel), 0) << "a line of width " << width;
    }
}

// The gallery shows the other flags.
TEST(PelmoAGG, FillsAPathInTheLinesColour)
{
    DrawnPicture picture(20, 20);
    PelmoAGG& agg = picture.renderer;
    agg.noFill();
    agg.lineColor(255, 255, 255);
    agg.resetPath();
    agg.moveTo(5, 5);
    agg.lineTo(15, 5);
    agg.lineTo(15, 15);
    agg.lineTo(5, 15);
    agg.closePolygon();
    agg.drawPath(kFillWithLineColor);
    EXPECT_EQ(picture.area(), 100.0);
}

TEST(PelmoAGG, TakesTheMasterAlphaWhenAColourIsSet)
{
    DrawnPicture picture(4, 4);
    PelmoAGG& agg = picture.renderer;
    agg.masterAlpha(0.5);
    agg.fillColor(255, 255, 255, 255);
    agg.lineColor(1, 2, 3, 101);
    agg.masterAlpha(0.1);
    EXPECT_EQ(agg.fillColor().a, 127);
    EXPECT_EQ(agg.lineColor().a, 50);
    agg.noLine();
    agg.rectangle(0, 0, 4, 4);
    EXPECT_EQ(picture.at(1, 1), (Pixel{127, 127, 127, 255}));

    agg.clearAll(10, 20, 30, 255);
    EXPECT_EQ(picture.at(3, 3), (Pixel{30, 20, 10, 25}));
}

// Shapes end at the box's edge, pictures and text at the pixel that it lies in.
TEST(PelmoAGG, ClipsShapesAndPictures)
{
    struct Case
    {
        double x1, y1, x2, y2;
        int shape, pixels;
    };
    const double nan = std::nan("");
    const Case cases[] = {
        {0, 0, 20, 10, 200, 200},         {12, 7, 2, 3, 40, 55}, {-5, -5, 3, 3, 9, 16},
        {-1e9, -1e9, 1e9, 1e9, 200, 200}, {0, -9, 20, -3, 0, 0}, {5, 5, 9, 5, 0, 0},
        {nan, 0, 20, 10, 0, 0},           {0, 0, nan, 10, 0, 0}, {19, 9, 1e300, 1e300, 1, 1},
    };
    DrawnPicture white(20, 10);
    white.fill(whitePixel);
    for (const Case& c : cases)
    {
        SCOPED_TRACE(testing::Message() << c.x1 << ", " << c.y1 << ", " << c.x2 << ", " << c.y2);
        DrawnPicture shape(20, 10), pixels(20, 10);
        drawNoLines(shape.renderer);
        shape.renderer.clipBox(c.x1, c.y1, c.x2, c.y2);
        shape.renderer.rectangle(-100, -100, 100, 100);
        EXPECT_EQ(shape.countOther(blackPixel), c.shape);
        pixels.renderer.clipBox(c.x1, c.y1, c.x2, c.y2);
        pixels.renderer.blendImage(white.image(), 0, 0, 255);
        EXPECT_EQ(pixels.countOther(blackPixel), c.pixels);
    }
}

TEST(PelmoAGG, DrawsIntoABottomUpPicture)
{
    std::vector<unsigned char> memory(4 * 3 * 4);
    PelmoAGG agg;
    agg.attach(memory.data(), 4, 3, -16);
    drawNoLines(agg);
    agg.rectangle(0, 0, 4, 1);
    EXPECT_EQ(memory[2 * 16], 255) << "row 0 is the last in memory";
    EXPECT_EQ(memory[0], 0);
    agg.blurRect(0, 0, 3, 2, 1, 1);
    EXPECT_GT(memory[1 * 16], 0) << "the blur reaches row 1";
}

TEST(PelmoAGG, DrawsNothingWithoutAPicture)
{
    std::vector<unsigned char> memory(64, 7);
    PelmoAGG agg;
    const auto drawAll = [&agg]
    {
        agg.clearAll(1, 2, 3, 4);
        agg.rectangle(0, 0, 10, 10);
        agg.blurRect(0, 0, 10, 10, 3, 3);
        agg.clipBox(0, 0, 4, 4);
        agg.ellipse(2, 2, 2, 2);
    };
    drawAll();
    for (const auto& [width, height, stride] : {std::tuple(0u, 4u, 16),
                                                {4u, 0u, 16},
                                                {9000u, 1u, 36000},
                                                {4u, 4u, 8},
                                                {1u << 31, 4u, std::numeric_limits<int>::min()}})
    {
        agg.attach(memory.data(), width, height, stride);
        drawAll();
    }
    agg.attach(nullptr, 4, 4, 16);
    drawAll();
    EXPECT_EQ(std::count(memory.begin(), memory.end(), 7), 64);
}

// Every operator by its definition, for two opaque greys.
TEST(PelmoAGG, ComposesByTheOperatorThatTheNumberStandsFor)
{
    struct Case
    {
        int mode;
        double (*value)(double source, double picture);
        double alpha = 1.0;
    };
    const Case cases[] = {
        {0, [](double, double) { return 0.0; }, 0.0},
        {1, [](double s, double) { return s; }},
        {2, [](double, double d) { return d; }},
        {3, [](double s, double) { return s; }},
        {4, [](double, double d) { return d; }},
        {5, [](double s, double) { return s; }},
        {7, [](double, double) { return 0.0; }, 0.0},
        {9, [](double s, double) { return s; }},
        {11, [](double, double) { return 0.0; }, 0.0},
        {12, [](double s, double d) { return std::min(s + d, 1.0); }},
        {13, [](double s, double d) { return std::max(d - s, 0.0); }},
        {14, [](double s, double d) { return s * d; }},
        {15, [](double s, double d) { return s + d - s * d; }},
        {16, [](double s, double d) { return d < 0.5 ? 2 * s * d : 1 - 2 * (1 - s) * (1 - d); }},
        {17, [](double s, double d) { return std::min(s, d); }},
        {18, [](double s, double d) { return std::max(s, d); }},
        {19, [](double s, double d) { return std::min(d / (1 - s), 1.0); }},
        {20, [](double s, double d) { return 1 - std::min((1 - d) / s, 1.0); }},
        {21, [](double s, double d) { return s < 0.5 ? 2 * s * d : 1 - 2 * (1 - s) * (1 - d); }},
        {23, [](double s, double d) { return std::fabs(s - d); }},
        {24, [](double s, double d) { return s + d - 2 * s * d; }},
        {25, [](double s, double d) { return std::clamp((d - 0.5) * 2 * s + 0.5, 0.0, 1.0); }},
        {26, [](double, double d) { return 1 - d; }},
        {27, [](double s, double d) { return (1 - d) * s; }},
        {28, [](double s, double) { return s; }},
    };
    for (const Case& c : cases)
        for (const auto& [source, below] : {std::pair(200, 90), {60, 180}})
        {
            DrawnPicture picture(3, 3), stamp(3, 3);
            picture.fill({below, below, below, 255});
            stamp.fill({source, source, source, 255});
            picture.renderer.blendMode(BlendMode(c.mode));
            picture.renderer.fillColor(unsigned(source), unsigned(source), unsigned(source));
            picture.renderer.noLine();
            picture.renderer.rectangle(0, 0, 3, 1);
            picture.renderer.blendImage(stamp.image(), 0, 1, 0, 1, 0, 1, 255);
            for (int y : {0, 1})
            {
                const Pixel now = picture.at(0, y);
                EXPECT_NEAR(now.green, 255 * c.value(source / 255.0, below / 255.0), 1.01)
                    << "mode " << c.mode << ", " << source << " on " << below << ", row " << y;
                EXPECT_EQ(now.alpha, int(255 * c.alpha)) << "mode " << c.mode;
            }
        }
}

// With coordinates that no editor has, everything has to end soon and to stay within memory.
TEST(PelmoAGG, SurvivesAnyCoordinates)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double values[] = {std::nan(""), infinity, -infinity, 1e9, -1e9, 1e300, -3e38, 0.0, 12.5};
    DrawnPicture picture(40, 30), stamp(8, 8);
    PelmoAGG& agg = picture.renderer;
    agg.fillColor(255, 255, 255, 90);
    agg.lineColor(0, 255, 255, 90);
    for (double a : values)
        for (double b : values)
        {
            for (const auto& [x1, y1, x2, y2] :
                 {std::tuple(a, 3.0, b, 20.0), {2.0, a, 30.0, b}, {a, a, b, b}})
            {
                agg.lineWidth(a);
                agg.fillLinearGradient(x1, y1, x2, y2, {1, 2, 3, 4}, {200, 100, 50, 255}, b);
                agg.rectangle(x1, y1, x2, y2);
                agg.fillLinearGradient(y1, x2, x1, b, {1, 2, 3, 4}, {9, 9, 9, 9}, {200, 100, 50, 255});
                agg.roundedRect(x1, y1, x2, y2, b);
                agg.ellipse(x1, y1, x2, y2);
                agg.arc(x1, y1, x2, y2, a, b);
                agg.line(x1, y1, x2, y2);
                agg.blurRect(x1, y1, x2, y2, a, b);
                agg.blendImage(stamp.image(), x1, y1, x2, y2, a, b, 300);
                for (ImageFilter filter : {kFilterNone, kFilterBilinear, kFilterHermite, kFilterBlackman})
                {
                    agg.imageFilter(filter);
                    agg.transformImage(stamp.image(), 0, 0, 8, 8, x1, y1, x2, y2);
                    agg.transformImage(stamp.image(), 3, -(1 << 30), 8, 1 << 30, x1, y1, x2, y2);
                }
                agg.clipBox(x1, y1, x2, y2);
                agg.masterAlpha(a);
            }
            agg.clipBox(0, 0, 40, 30);
        }
    agg.masterAlpha(1.0);
    drawNoLines(agg);
    agg.rectangle(-1e9, -1e9, 1e9, 1e9);
    EXPECT_EQ(picture.countOther(whitePixel), 0);
}
