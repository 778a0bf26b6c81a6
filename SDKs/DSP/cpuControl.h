// Sets the floating-point mode of the calling thread for the length of a block, and puts the host's mode
// back afterwards, so that the sound doesn't depend on what the host or another plug-in left there.
//
// [audio thread] One object a processing object. Pairs may nest up to eight deep; deeper pairs leave
// the mode as it is. Where the processor has no MXCSR nothing happens.
#pragma once

#include <cstdint>

class cpuControl
{
public:
    // Every exception masked, round to nearest, denormals kept: neither flushed nor taken as zero.
    static constexpr int plainMode = 0x1F80;

    // Remembers the present mode and sets the given one: an MXCSR value without its status bits.
    void push(int mode);
    // Goes back to the mode before the last push; without one nothing happens.
    void pop();

private:
    static constexpr int maximumDepth = 8;
    uint32_t saved[maximumDepth] = {};
    int32_t depth = 0;
};

// push and pop on every way out of a scope.
class ScopedCpuMode
{
public:
    ScopedCpuMode(cpuControl& used, int mode) : control(used) { control.push(mode); }
    ~ScopedCpuMode() { control.pop(); }
    ScopedCpuMode(const ScopedCpuMode&) = delete;
    ScopedCpuMode& operator=(const ScopedCpuMode&) = delete;

private:
    cpuControl& control;
};
