#include "DSP/VectorPrimitives.h"
#include "DSP/dsp_Memory.h"

#include <cstdint>
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

TEST(VectorPrimitives, CountsOfZeroAndBelowTouchNothing)
{
    for (int count : {0, -1})
    {
        float value = 7.0f;
        ippsCopy_32f(nullptr, nullptr, count);
        ippsMove_32f(nullptr, nullptr, count);
        ippsZero_32f(nullptr, count);
        ippsMax_32f(nullptr, count, &value);
        ippsMin_32f(nullptr, count, &value);
        EXPECT_EQ(value, 7.0f);
        EXPECT_EQ(ippsMalloc_32f(count), nullptr);
    }
}

TEST(VectorPrimitives, FindsTheExtremes)
{
    const float values[] = {-3.0f, 2.0f, -5.5f, 1.0f};
    float low = 0.0f, high = 0.0f;
    ippsMin_32f(values, 4, &low);
    ippsMax_32f(values, 4, &high);
    EXPECT_EQ(low, -5.5f);
    EXPECT_EQ(high, 2.0f);
}

TEST(dsp_Memory, ABufferIsAlignedZeroedAndReplaced)
{
    float* buffer = nullptr;
    DSP::MEMORY::getEmptyBufferFloat(buffer, 100);
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(buffer) % 64, 0u);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(buffer[i], 0.0f);
    DSP::MEMORY::getEmptyBufferFloat(buffer, 0);
    EXPECT_EQ(buffer, nullptr);
}
