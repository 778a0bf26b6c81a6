// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/CriticalSection.h"

namespace Core::Threads
{
CriticalSection::CriticalSection()
{
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutexattr_setprotocol(&attributes, PTHREAD_PRIO_INHERIT);
    pthread_mutex_init(&mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

CriticalSection::~CriticalSection()
{
    pthread_mutex_destroy(&mutex);
}

void CriticalSection::enter()
{
    pthread_mutex_lock(&mutex);
    count();
}

bool CriticalSection::tryEnter()
{
    if (pthread_mutex_trylock(&mutex) != 0)
        return false;
    count();
    return true;
}

void CriticalSection::leave()
{
    if (owner != pthread_self())
        return;
    if (--depth == 0)
        owner = pthread_t();
    pthread_mutex_unlock(&mutex);
}

void CriticalSection::count()
{
    owner = pthread_self();
    ++depth;
}
}
