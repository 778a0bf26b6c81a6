// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/OrbelThreads.h"

#include <algorithm>
#include <climits>
#include <pthread.h>

namespace Orbel
{
OrbelThreadHandle createOrbelThread(Core::Threads::ThreadRoutine routine, void* argument, long priority)
{
    return Core::Threads::createThread(routine, argument, int(std::clamp<long>(priority, INT_MIN, INT_MAX)));
}

void killOrbelThread(const OrbelThreadHandle& handle)
{
    Core::Threads::killThread(handle);
}

void OrbelThreadSleep(int ms)
{
    Core::Threads::threadSleep(ms);
}

void OrbelThreadAllowCancel()
{
    pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, nullptr);
    pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, nullptr);
}
}
