// SPDX-License-Identifier: GPL-3.0-or-later
#include "DSP/VectorPrimitives.h"
#include "DSP/dsp_Memory.h"

#include <gtest/gtest.h>
#include <vector>

TEST(VectorPrimitives, MoveAllowsOverlapBothWays)
{
    std::vector<float> v = {1, 2, 3, 4, 5, 6};
    ippsMove_32f(v.data() + 2, v.data(), 4);
    EXPECT_EQ(v, (std::vector<float>{3, 4, 5, 6, 5, 6}));
    ippsMove_32f(v.data(), v.data() + 1, 4);
    EXPECT_EQ(v, (std::vector<float>{3, 3, 4, 5, 6, 6}));
}

TEST(dsp_Memory, ABufferIsAlignedZeroedAndReplaced)
{
    float* buffer = nullptr;
    DSP::MEMORY::getEmptyBufferFloat(buffer, 100);
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(reinterpret_cast<size_t>(buffer) % 64, 0u);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(buffer[i], 0.0f);
    DSP::MEMORY::getEmptyBufferFloat(buffer, 0);
    EXPECT_EQ(buffer, nullptr);
}
