#include "DSP/cpuControl.h"

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

constexpr uint32_t controlBits = 0xFF80; // what lies below are the sticky status flags

#if defined(__SSE__)
static uint32_t readMode()
{
    return _mm_getcsr() & controlBits;
}

static void setMode(uint32_t mode)
{
    if (readMode() != mode)
        _mm_setcsr(mode);
}
#else
static uint32_t readMode()
{
    return 0;
}

static void setMode(uint32_t) {}
#endif

void cpuControl::push(int mode)
{
    if (depth < maximumDepth)
    {
        saved[depth] = readMode();
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
