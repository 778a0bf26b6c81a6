// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/DrawnPicture.h"
#include "Tovrane/draw/PelmoAGG.h"

#include <array>

using namespace Tovra;

static const agg::rgba8 c1{0, 200, 10, 255};
static const agg::rgba8 c2{255, 100, 10, 255};
static const agg::rgba8 c3{0, 0, 0, 128};

static void expectColor(const agg::rgba8& color, const agg::rgba8& expected, int entry)
{
    const auto text = [](const agg::rgba8& c) {
        return testing::PrintToString(std::array<int, 4>{c.r, c.g, c.b, c.a});
    };
    EXPECT_EQ(text(color), text(expected)) << "entry " << entry;
}

// Worked by hand: a step k of 256 at entry i is int((i - start) x 256 / (stop - start) + 0.5).
TEST(PelmoAGGGradient, SpreadsTwoColoursByTheProfile)
{
    struct Case
    {
        double profile;
        int entry;
        agg::rgba8 color;
    };
    const Case cases[] = {
        // From 1 to 255: 127 of 254 steps is k = 128; the last one, 253, is k = 255 and stays.
        {1.0, 1, c1},
        {1.0, 128, {127, 150, 10, 255}},
        {1.0, 254, {254, 100, 10, 255}},
        {1.0, 255, {254, 100, 10, 255}},
        // From 128 to 129, the one step of which is c1, and that stays.
        {0.0, 128, c1},
        {0.0, 255, c1},
        // From 65 to 191: 126 steps.
        {0.5, 65, c1},
        {0.5, 66, {1, 199, 10, 255}},
        {0.5, 190, {253, 100, 10, 255}},
        {0.5, 255, {253, 100, 10, 255}},
        // Below 0 there is no transition.
        {-1.0, 255, c1},
        // Above 1 both ends of the table cut the transition: from -126 to 382, 508 steps.
        {2.0, 0, {62, 175, 10, 255}},
    };
    PelmoAGG renderer;
    for (const Case& c : cases)
    {
        SCOPED_TRACE(testing::Message() << "profile " << c.profile);
        renderer.fillLinearGradient(0, 0, 10, 0, c1, c2, c.profile);
        expectColor(renderer.fillGradientTable()[c.entry], c.color, c.entry);
    }
}

TEST(PelmoAGGGradient, TakesTheMasterAlphaOnceForTwoColoursAndUnevenlyForThree)
{
    PelmoAGG renderer;
    renderer.fillLinearGradient(0, 0, 10, 0, c1, c2, c3);
    for (const auto& [entry, color] : {std::pair(0, c1), {127, c2}, {128, c2}, {255, c3}})
        expectColor(renderer.fillGradientTable()[entry], color, entry);
    expectColor(renderer.fillGradientTable()[64], {128, 149, 10, 255}, 64); // k = 129

    renderer.masterAlpha(0.5);
    renderer.fillLinearGradient(0, 0, 10, 0, c1, c2, 1.0);
    EXPECT_EQ(renderer.fillGradientTable()[0].a, 127);
    EXPECT_EQ(renderer.fillGradientTable()[255].a, 127);
    renderer.fillLinearGradient(0, 0, 10, 0, c1, c2, c3);
    EXPECT_EQ(renderer.fillGradientTable()[0].a, 63) << "255, halved twice";
    EXPECT_EQ(renderer.fillGradientTable()[127].a, 255);
    EXPECT_EQ(renderer.fillGradientTable()[255].a, 64);
}

TEST(PelmoAGGGradient, FillsOverAnOperatorToo)
{
    DrawnPicture picture(10, 10);
    PelmoAGG& renderer = picture.renderer;
    picture.fill({100, 100, 100, 255});
    renderer.noLine();
    renderer.blendMode(kBlendMultiply);
    renderer.fillLinearGradient(0, 0, 0, 10, {255, 255, 255, 255}, {0, 0, 0, 255}, 1.0);
    renderer.rectangle(0, 0, 10, 10);
    EXPECT_NEAR(picture.at(5, 0).green, 95, 2);
    EXPECT_NEAR(picture.at(5, 9).green, 5, 2);
}
