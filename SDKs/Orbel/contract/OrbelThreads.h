// SPDX-License-Identifier: GPL-3.0-or-later
// Threads and counters under the framework's names. What a handle is, and who may wait for it, stands in
// CORE/Threads.h; a wait for the end goes through Core::Threads::waitForThreadDone.
#pragma once

#include "CORE/Threads.h"

namespace Orbel
{
using OrbelThreadHandle = Core::Threads::ThreadHandle;

// [any thread but audio]  Starts routine(argument); a negative priority gives way to other threads. Null if
// no thread could be started.
OrbelThreadHandle createOrbelThread(Core::Threads::ThreadRoutine routine, void* argument, long priority);
// [any thread but audio]  Asks the thread to end, without waiting for it.
void killOrbelThread(const OrbelThreadHandle& handle);
// [any thread but audio]  Milliseconds.
void OrbelThreadSleep(int ms);
// [worker]  From here on the calling thread can be killed between any two instructions, not only where it
// sleeps, waits or transfers. Only for code that neither allocates nor holds a lock: what it is in the
// middle of stays unfinished.
void OrbelThreadAllowCancel();

// [any thread]  One step up or down as a single action, wrapping at the ends. The result is the value before
// it.
inline int AtomicIncrement(volatile int& value)
{
    return __atomic_fetch_add(&value, 1, __ATOMIC_SEQ_CST);
}
inline int AtomicDecrement(volatile int& value)
{
    return __atomic_fetch_sub(&value, 1, __ATOMIC_SEQ_CST);
}
}
