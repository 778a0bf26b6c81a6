// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/Renderer.h"

#include <gtest/gtest.h>

using namespace lodex;

TEST(Renderer, StaysOnTheBeatOverAnHour)
{
    Transport transport{128.0};
    for (int i = 0; i < 3600 * 48000 / 512; ++i)
        transport.advance(512, 48000);
    EXPECT_NEAR(transport.ppq, 60 * 128, 1e-6); // a hundredth of a sample at that rate is 4e-7 beats
}
