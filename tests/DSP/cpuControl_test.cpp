// SPDX-License-Identifier: GPL-3.0-or-later
#include "DSP/cpuControl.h"

#include <gtest/gtest.h>

#if defined(__SSE__)
#include <xmmintrin.h>

constexpr int flushToZero = 0x8000;
constexpr int denormalsAreZero = 0x40;
constexpr unsigned statusFlags = 0x3F;

TEST(cpuControl, NestedPairsPutTheWholeWordOfTheHostBack)
{
    const unsigned before = _mm_getcsr();
    for (const int host : {0x1F80 | flushToZero | denormalsAreZero, 0x1F80 | denormalsAreZero,
                           0x3F80 | flushToZero | 0x20}) // the last rounds down and has a status flag set
    {
        SCOPED_TRACE(host);
        _mm_setcsr(unsigned(host));
        cpuControl control;
        {
            const ScopedCpuMode outer(control, cpuControl::plainMode);
            EXPECT_EQ(_mm_getcsr() & ~statusFlags, 0x1F80u);
            volatile float tiny = 1e-38f, subnormal = 1e-40f;
            EXPECT_GT(tiny * 0.01f, 0.0f) << "a subnormal result is kept";
            EXPECT_GT(subnormal * 100.0f, 0.0f) << "and so is a subnormal input";
            const ScopedCpuMode inner(control, 0x1F80 | flushToZero);
            EXPECT_EQ(tiny * 0.01f, 0.0f);
        }
        EXPECT_EQ(_mm_getcsr(), unsigned(host));
    }
    _mm_setcsr(before);
}

TEST(cpuControl, PairsTooDeepOrUnevenLeaveTheModeWhole)
{
    const unsigned before = _mm_getcsr() & ~statusFlags;
    cpuControl control;
    control.pop();
    EXPECT_EQ(_mm_getcsr() & ~statusFlags, before);
    for (int i = 0; i < 12; ++i)
        control.push(i % 2 ? 0x1F80 : 0x1F80 | flushToZero);
    for (int i = 0; i < 12; ++i)
        control.pop();
    EXPECT_EQ(_mm_getcsr() & ~statusFlags, before);
}
#endif
