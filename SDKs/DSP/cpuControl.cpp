// SPDX-License-Identifier: GPL-3.0-or-later
#include "DSP/cpuControl.h"

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

// All of the control word but the status flags in its lowest six bits: denormals-are-zero, the exception
// masks, the rounding and flush-to-zero.
constexpr uint32_t controlBits = 0xFFC0;

#if defined(__SSE__)
static uint32_t readWord()
{
    return _mm_getcsr();
}

static void setMode(uint32_t word)
{
    if (((readWord() ^ word) & controlBits) != 0)
        _mm_setcsr(word);
}
#else
static uint32_t readWord()
{
    return 0;
}

static void setMode(uint32_t) {}
#endif

void cpuControl::push(int mode)
{
    if (depth < maximumDepth)
    {
        saved[depth] = readWord();
        setMode(uint32_t(mode));
    }
    ++depth;
}

void cpuControl::pop()
{
    if (depth == 0)
        return;
    --depth;
    if (depth < maximumDepth)
        setMode(saved[depth]);
}
