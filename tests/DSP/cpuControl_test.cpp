#include "DSP/cpuControl.h"

#include <gtest/gtest.h>

#if defined(__SSE__)
#include <xmmintrin.h>

constexpr unsigned flushToZero = 0x8000;
constexpr unsigned statusBits = 0x3F;

TEST(cpuControl, NestedPairsPutTheFirstModeBack)
{
    const unsigned before = _mm_getcsr();
    _mm_setcsr((before | flushToZero) & ~statusBits);
    const unsigned host = _mm_getcsr();
    cpuControl control;
    {
        const ScopedCpuMode outer(control, cpuControl::plainMode);
        EXPECT_EQ(_mm_getcsr() & ~statusBits, 0x1F80u);
        volatile float tiny = 1e-38f;
        EXPECT_GT(tiny * 0.01f, 0.0f); // a denormal number, which stays one
        const ScopedCpuMode inner(control, 0x1F80 | int(flushToZero));
        EXPECT_EQ(tiny * 0.01f, 0.0f);
    }
    EXPECT_EQ(_mm_getcsr() & ~statusBits, host & ~statusBits);
    _mm_setcsr(before);
}

TEST(cpuControl, PairsTooDeepOrUnevenLeaveTheModeWhole)
{
    const unsigned before = _mm_getcsr() & ~statusBits;
    cpuControl control;
    control.pop();
    EXPECT_EQ(_mm_getcsr() & ~statusBits, before);
    for (int i = 0; i < 12; ++i)
        control.push(i % 2 ? 0x1F80 : 0x1F80 | int(flushToZero));
    for (int i = 0; i < 12; ++i)
        control.pop();
    EXPECT_EQ(_mm_getcsr() & ~statusBits, before);
}
#endif
