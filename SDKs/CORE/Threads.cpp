// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/Threads.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <ctime>
#include <mutex>
#include <pthread.h>
#include <sys/resource.h>

namespace Core::Threads
{
// The thread is joinable, so that a wait lasts until none of its code runs any more. The object is shared
// with the running thread, and the last of its holders detaches what nobody joined.
class Thread
{
public:
    Thread(ThreadRoutine toRun, void* itsArgument, int relativePriority)
        : routine(toRun), argument(itsArgument), priority(relativePriority)
    {
    }
    ~Thread()
    {
        if (started && !joined)
            pthread_detach(id);
    }
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    static bool start(const ThreadHandle& thread);
    static Thread* current() { return running; }
    void kill();
    void wait();
    void sleepUntilKilled(std::chrono::milliseconds longest);

private:
    struct EndMark
    {
        Thread& thread;
        ~EndMark()
        {
            const std::lock_guard lock(thread.endLock);
            thread.ended = true;
        }
    };

    static void* run(void* handle);
    void applyPriority() const;

    static thread_local Thread* running; // null in threads that were not made here

    const ThreadRoutine routine;
    void* const argument;
    const int priority;
    pthread_t id{};
    bool started = false;
    std::mutex endLock;
    bool ended = false;  // the thread's own last word, under endLock: until it is true, id can be cancelled
    bool killed = false; // under endLock
    std::condition_variable wakeUp;
    std::mutex joinLock;
    bool joined = false; // under joinLock
};

thread_local Thread* Thread::running = nullptr;

bool Thread::start(const ThreadHandle& thread)
{
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0)
        return false;
    // The creator may be a host's real-time thread, whose policy is not for us.
    const sched_param ordinary{};
    pthread_attr_setinheritsched(&attributes, PTHREAD_EXPLICIT_SCHED);
    pthread_attr_setschedpolicy(&attributes, SCHED_OTHER);
    pthread_attr_setschedparam(&attributes, &ordinary);

    auto share = std::make_unique<ThreadHandle>(thread);
    thread->started = pthread_create(&thread->id, &attributes, run, share.get()) == 0;
    if (thread->started)
        (void)share.release(); // run owns it
    pthread_attr_destroy(&attributes);
    return thread->started;
}

void* Thread::run(void* handle)
{
    const std::unique_ptr<ThreadHandle> share(static_cast<ThreadHandle*>(handle));
    Thread& thread = **share;
    const EndMark mark{thread};
    running = &thread;
    thread.applyPriority();
    void* const result = thread.routine(thread.argument);
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr); // too late to unwind anything
    return result;
}

// Every ordinary thread has the same static priority; what tells them apart on Linux is a nice value
// of each thread's own.
void Thread::applyPriority() const
{
    if (priority != 0)
        setpriority(PRIO_PROCESS, 0, getpriority(PRIO_PROCESS, 0) - std::clamp(priority, -40, 40));
}

void Thread::kill()
{
    const std::lock_guard lock(endLock);
    if (ended)
        return;
    pthread_cancel(id);
    killed = true;
    wakeUp.notify_all();
}

void Thread::sleepUntilKilled(std::chrono::milliseconds longest)
{
    std::unique_lock lock(endLock);
    wakeUp.wait_for(lock, longest, [this] { return killed; });
}

void Thread::wait()
{
    if (pthread_equal(id, pthread_self()))
        return;
    const std::lock_guard lock(joinLock);
    if (!joined)
        joined = pthread_join(id, nullptr) == 0;
}

ThreadHandle createThread(ThreadRoutine routine, void* argument, int priority)
{
    if (!routine)
        return {};
    auto thread = std::make_shared<Thread>(routine, argument, priority);
    return Thread::start(thread) ? thread : ThreadHandle();
}

void killThread(const ThreadHandle& handle)
{
    if (handle)
        handle->kill();
}

void waitForThreadDone(const ThreadHandle& handle)
{
    if (handle)
        handle->wait();
}

void releaseThreadHandle(const ThreadHandle&) {}

// The two steps of threadSleep are not inlined: no frame with locals is left for a killed thread to
// unwind, which the address sanitizer would take for a stray access.
[[gnu::noinline]] static int disableCancelling()
{
    int former = PTHREAD_CANCEL_ENABLE;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &former);
    return former;
}

[[gnu::noinline]] static void sleepWhole(int ms)
{
    if (Thread* const own = Thread::current())
        return own->sleepUntilKilled(std::chrono::milliseconds(ms));
    timespec left{ms / 1000, ms % 1000 * 1000000L};
    while (nanosleep(&left, &left) != 0 && errno == EINTR)
    {
    }
}

void threadSleep(int ms)
{
    const int former = disableCancelling();
    sleepWhole(ms > 0 ? ms : 0);
    pthread_setcancelstate(former, nullptr);
    pthread_testcancel();
}
}
