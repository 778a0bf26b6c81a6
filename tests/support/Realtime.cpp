// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Realtime.h"

#include <cerrno>
#include <cstddef>
#include <dlfcn.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

static thread_local bool open = false;
static thread_local long allocationCount = 0;
static thread_local long lockCount = 0;

static void countAllocation()
{
    allocationCount += open;
}

RealtimeWindow::RealtimeWindow()
{
    allocationCount = lockCount = 0;
    open = true;
}

RealtimeWindow::~RealtimeWindow()
{
    open = false;
}

long RealtimeWindow::allocations() const
{
    return allocationCount;
}

long RealtimeWindow::locks() const
{
    return lockCount;
}

bool makesNoSystemCall(const std::function<void()>& prepare, const std::function<void()>& strict)
{
    const pid_t child = fork();
    if (child == 0)
    {
        prepare();
        prctl(PR_SET_SECCOMP, SECCOMP_MODE_STRICT);
        strict();
        syscall(SYS_exit, 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// The program's own versions of these come before the C library's, for every library that it loads.
extern "C"
{
    void* __libc_malloc(size_t);
    void* __libc_calloc(size_t, size_t);
    void* __libc_realloc(void*, size_t);
    void* __libc_memalign(size_t, size_t);
    void __libc_free(void*);

    [[gnu::visibility("default")]] void* malloc(size_t size)
    {
        countAllocation();
        return __libc_malloc(size);
    }

    [[gnu::visibility("default")]] void* calloc(size_t count, size_t size)
    {
        countAllocation();
        return __libc_calloc(count, size);
    }

    [[gnu::visibility("default")]] void* realloc(void* memory, size_t size)
    {
        countAllocation();
        return __libc_realloc(memory, size);
    }

    [[gnu::visibility("default")]] void* aligned_alloc(size_t alignment, size_t size)
    {
        countAllocation();
        return __libc_memalign(alignment, size);
    }

    [[gnu::visibility("default")]] int posix_memalign(void** memory, size_t alignment, size_t size)
    {
        countAllocation();
        *memory = __libc_memalign(alignment, size);
        return *memory ? 0 : ENOMEM;
    }

    [[gnu::visibility("default")]] void free(void* memory)
    {
        countAllocation();
        __libc_free(memory);
    }

    using LockFunction = int (*)(pthread_mutex_t*);

    static int lockBy(const char* name, pthread_mutex_t* mutex)
    {
        lockCount += open;
        const bool wasOpen = open;
        open = false;
        const auto next = reinterpret_cast<LockFunction>(dlsym(RTLD_NEXT, name));
        open = wasOpen;
        return next(mutex);
    }

    [[gnu::visibility("default")]] int pthread_mutex_lock(pthread_mutex_t* mutex)
    {
        return lockBy("pthread_mutex_lock", mutex);
    }

    [[gnu::visibility("default")]] int pthread_mutex_trylock(pthread_mutex_t* mutex)
    {
        return lockBy("pthread_mutex_trylock", mutex);
    }
}
