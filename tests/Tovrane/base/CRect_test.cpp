// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/CRect.h"

#include <gtest/gtest.h>
#include <limits>

using Tovra::CPoint;
using Tovra::CRect;

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

TEST(CRect, ChangesItsSizeWithItsCornerAndKeepsItWhenItMoves)
{
    const CRect rect(10, 20, 40, 60);
    EXPECT_EQ(CRect(rect).setTopLeft({15, 5}), CRect(15, 5, 40, 60));
    EXPECT_EQ(CRect(rect).moveTo({-5, 0.5}), CRect(-5, 0.5, 25, 40.5));
}

TEST(CRect, IsEmptyWithoutAnInside)
{
    EXPECT_FALSE(CRect(0, 0, 1e-9, 1e-9).isEmpty());
    for (const CRect& rect : {CRect(), CRect(0, 0, 0, 5), CRect(0, 5, 5, 5), CRect(5, 0, 4, 5),
                              CRect(noNumber, 0, 5, 5), CRect(0, 0, 5, noNumber)})
        EXPECT_TRUE(rect.isEmpty()) << testing::PrintToString(rect);
}

TEST(CRect, IsNeverLessThanNothingWhenItIsBound)
{
    const CRect other(10, 10, 20, 20);
    const struct
    {
        CRect rect, bound;
    } cases[] = {
        {{0, 0, 30, 30}, {10, 10, 20, 20}},   {{12, 13, 14, 15}, {12, 13, 14, 15}},
        {{5, 15, 15, 25}, {10, 15, 15, 20}},  {{30, 12, 40, 15}, {30, 12, 30, 15}}, // to its right
        {{0, 12, 5, 15}, {10, 12, 10, 15}},   {{12, 40, 15, 50}, {12, 40, 15, 40}},
        {{20, 20, 30, 30}, {20, 20, 20, 20}}, // a corner in common
    };
    for (const auto& c : cases)
        EXPECT_EQ(CRect(c.rect).bound(other), c.bound) << "of " << testing::PrintToString(c.rect);
}

TEST(CRect, BouncesIntoAnother)
{
    const CRect other(0, 0, 100, 50);
    const struct
    {
        CRect rect;
        CPoint shift;
    } cases[] = {
        {{10, 10, 20, 20}, {0, 0}},     {{-5, 10, 5, 20}, {5, 0}},
        {{95, 45, 105, 55}, {-5, -5}},  {{-10, 10, 120, 20}, {10, 0}}, // too wide: its left decides
        {{200, -7, 210, 3}, {-110, 7}},
    };
    for (const auto& c : cases)
    {
        CRect rect = c.rect;
        EXPECT_EQ(rect.bounce(other), c.shift) << testing::PrintToString(c.rect);
        EXPECT_EQ(rect, CRect(c.rect).offset(c.shift));
    }
}
