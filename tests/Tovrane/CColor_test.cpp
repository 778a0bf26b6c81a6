#include "Tovrane/CColor.h"

#include <gtest/gtest.h>

using Tovra::CColor;

TEST(CColor, LooksDarkerOnBlackByItsAlpha)
{
    const struct
    {
        CColor color, flat;
    } cases[] = {
        {{255, 128, 1, 255}, {255, 128, 1, 255}},
        {{255, 128, 1, 0}, {0, 0, 0, 255}},
        {{255, 100, 51, 128}, {128, 50, 25, 255}}, // 50.2 and 25.6 are cut
        {{254, 3, 2, 85}, {84, 1, 0, 255}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Tovra::convertCColorNoAlpha(c.color), c.flat) << int(c.color.alpha);
}
