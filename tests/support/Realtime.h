// SPDX-License-Identifier: GPL-3.0-or-later
// Watches a stretch of code for what an audio thread must not do.
//
// A program that links Realtime.cpp has its allocations and locks counted, while a RealtimeWindow is open
// on the same thread, in whatever library they happen. System calls are watched from outside: in a child
// process that the kernel kills at the first one.
#pragma once

#include <functional>

struct RealtimeWindow
{
    RealtimeWindow();
    ~RealtimeWindow();

    long allocations() const; // and releases
    long locks() const;
};

// Runs prepare, then strict under the kernel's watch, in a child process. True if strict made no system
// call. (Linux: the strict mode of seccomp.)
bool makesNoSystemCall(const std::function<void()>& prepare, const std::function<void()>& strict);
