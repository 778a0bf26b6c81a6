// SPDX-License-Identifier: GPL-3.0-or-later
// Threads of our own: the HTTP transfer and the update check run on one each.
//
// A handle is shared: whoever holds it may wait, any number of times and from several threads, or never.
// A thread that nobody waited for is let go when the last handle to it is dropped; dropping a handle
// neither stops the thread nor waits for it. A plug-in must have waited for its threads before its code is
// unloaded.
#pragma once

#include "CORE/CriticalSection.h"

#include <memory>

namespace Core::Threads
{
class Thread;
using ThreadHandle = std::shared_ptr<Thread>;
using ThreadRoutine = void* (*)(void* argument);

// [any thread]  Starts routine(argument). priority is relative to an ordinary thread of this process:
// negative gives way to others, positive needs rights that a host seldom has and is otherwise ignored.
// Null if no thread could be started.
ThreadHandle createThread(ThreadRoutine routine, void* argument, int priority);

// [any thread]  Asks the thread to end at its next cancellation point (threadSleep, or what POSIX calls one);
// its scopes are unwound. Does not wait. Does nothing to a thread that has ended, or to null. A thread that
// may be killed sleeps, waits and transfers but writes no file: it would be cut off in the middle.
void killThread(const ThreadHandle& handle);

// [any thread]  Returns when the thread has ended; at once for null, and when a thread waits for itself.
void waitForThreadDone(const ThreadHandle& handle);

// Does nothing: a handle is released when it goes out of scope.
void releaseThreadHandle(const ThreadHandle& handle);

// [any thread but audio]  Sleeps for the whole of ms milliseconds, whatever signals arrive; only a kill
// ends it, and the thread with it.
void threadSleep(int ms);
}
