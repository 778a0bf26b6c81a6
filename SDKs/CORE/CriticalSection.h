// SPDX-License-Identifier: GPL-3.0-or-later
// A recursive lock for short stretches: the scope's points, the draw lock, the timer and idle lists.
//
// The thread that holds it may enter again and has to leave as often. A thread that waits sleeps, and
// lends its priority to the holder: an audio thread that waits for the window thread is not held up by
// other threads that want the processor.
#pragma once

#include "CORE/Relaxed.h"

#include <pthread.h>

namespace Core::Threads
{
class CriticalSection
{
public:
    CriticalSection();
    ~CriticalSection();
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    // For owners that open and close a section apart from making it. It can be entered from its
    // construction to its destruction in any case, so there is nothing left to do here.
    void initSection() {}
    void freeSection() {}

    // [any thread]  Waits until the section is this thread's.
    void enter();
    // [any thread]  Never waits. True if the section is now this thread's.
    [[nodiscard]] bool tryEnter();
    // [any thread]  Takes back one enter. Does nothing if this thread is not inside.
    void leave();

private:
    void count();

    pthread_mutex_t mutex;
    Relaxed<pthread_t> owner = pthread_t(); // written by the holder; only the holder finds itself in here
    int depth = 0;                          // of the holder, guarded by mutex
};

// Enters the section here and leaves it at the end of the scope.
class SectionGuard
{
public:
    explicit SectionGuard(CriticalSection& entered) : section(entered) { section.enter(); }
    ~SectionGuard() { section.leave(); }
    SectionGuard(const SectionGuard&) = delete;
    SectionGuard& operator=(const SectionGuard&) = delete;

private:
    CriticalSection& section;
};
}
