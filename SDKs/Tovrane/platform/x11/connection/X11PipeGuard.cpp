// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/connection/X11PipeGuard.h"

#include <cerrno>
#include <ctime>
#include <xcb/xcb.h>

namespace Tovra
{
static sigset_t pipeAlone()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    return set;
}

// A connection that is broken already is not written to any more.
X11PipeGuard::X11PipeGuard(xcb_connection_t* guarded) : connection(guarded)
{
    if (xcb_connection_has_error(connection) != 0)
        return;
    sigset_t pending;
    sigpending(&pending);
    const sigset_t pipe = pipeAlone();
    isOurs = sigismember(&pending, SIGPIPE) == 0 && pthread_sigmask(SIG_BLOCK, &pipe, &before) == 0;
}

X11PipeGuard::~X11PipeGuard()
{
    if (!isOurs)
        return;
    const sigset_t pipe = pipeAlone();
    constexpr timespec now{};
    if (xcb_connection_has_error(connection) != 0)
        while (sigtimedwait(&pipe, nullptr, &now) < 0 && errno == EINTR)
            ;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}
}
