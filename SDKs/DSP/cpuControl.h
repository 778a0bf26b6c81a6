// SPDX-License-Identifier: GPL-3.0-or-later
// Sets the floating-point mode of the calling thread for the length of a block, and puts the host's mode
// back afterwards, so that the sound doesn't depend on what the host or another plug-in left there.
//
// [audio thread] One for each object that processes. Pairs may nest up to eight deep; deeper pairs leave the
// mode as it is. On a processor without MXCSR nothing happens.
#pragma once

#include <cstdint>

class cpuControl
{
public:
    // Every exception masked, round to nearest, subnormals kept: neither flushed nor taken as zero.
    static constexpr int plainMode = 0x1F80;

    // Remembers the present control word and sets the given mode: an MXCSR value without status flags.
    void push(int mode);
    // Puts the whole word from before the last push back, if the mode is another one by now. Without a push
    // nothing happens.
    void pop();

private:
    static constexpr int maximumDepth = 8;
    uint32_t saved[maximumDepth] = {}; // status flags included
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
