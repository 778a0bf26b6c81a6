// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/ThreadCheck.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace Core
{
static std::atomic<ThreadFaultHandler> faultHandler = nullptr;

ThreadFaultHandler setThreadFaultHandler(ThreadFaultHandler handler)
{
    return faultHandler.exchange(handler);
}

#ifndef NDEBUG

namespace
{
using ThreadID = std::thread::id;

// The threads that are inside a section of any object. Those beyond its size are not checked.
std::array<std::atomic<ThreadID>, 64> threadsInside{};

void printFirstFault(const char* seam, const char* fault)
{
    static std::atomic<bool> printed = false;
    if (!printed.exchange(true))
        std::fprintf(stderr, "thread check: %s: %s (further faults are not printed)\n", seam, fault);
}

void report(const char* seam, const char* fault)
{
    const ThreadFaultHandler handler = faultHandler;
    (handler ? handler : printFirstFault)(seam, fault);
}

std::atomic<ThreadID>* enlist(ThreadID thread)
{
    for (std::atomic<ThreadID>& place : threadsInside)
        if (ThreadID nobody; place.compare_exchange_strong(nobody, thread))
            return &place;
    return nullptr;
}
}

void checkWindowThread(const char* seam)
{
    const ThreadID self = std::this_thread::get_id();
    const auto isSelf = [self](const std::atomic<ThreadID>& place) { return place == self; };
    if (std::any_of(threadsInside.begin(), threadsInside.end(), isSelf))
        report(seam, "a window seam was called on a thread that is processing audio");
}

AudioSection::Stay::Stay(AudioSection& where, const char* seam) : section(where)
{
    const ThreadID self = std::this_thread::get_id();
    ThreadID holder;
    entered = section.inside.compare_exchange_strong(holder, self);
    if (entered)
        listed = enlist(self);
    else if (holder != self)
        report(seam, "a second thread came in while one was processing audio");
}

AudioSection::Stay::~Stay()
{
    if (listed)
        *listed = ThreadID();
    if (entered)
        section.inside = ThreadID();
}

void AudioSection::checkAudioThread(const char* seam) const
{
    const ThreadID holder = inside;
    if (holder != ThreadID() && holder != std::this_thread::get_id())
        report(seam, "an audio seam was called on another thread than the one that is processing audio");
}

#endif
}
