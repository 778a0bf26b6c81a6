// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/CColor.h"

#include <gtest/gtest.h>

TEST(CColor, LooksDarkerOnBlackByItsAlpha)
{
    using Tovra::CColor;
    EXPECT_EQ(Tovra::convertCColorNoAlpha({255, 128, 1, 255}), (CColor{255, 128, 1, 255}));
    EXPECT_EQ(Tovra::convertCColorNoAlpha({255, 100, 51, 128}), (CColor{128, 50, 25, 255}))
        << "50.2 and 25.6";
    EXPECT_EQ(Tovra::convertCColorNoAlpha({255, 128, 1, 0}), (CColor{0, 0, 0, 255}));
}
