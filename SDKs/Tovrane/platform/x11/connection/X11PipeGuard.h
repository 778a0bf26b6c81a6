// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps a lost server from ending the host: writing to a connection that the server has cut raises SIGPIPE,
// which ends a process that has no handler for it. While a guard lives, the signal stays away from this
// thread; the process's own handling is not touched.
#pragma once

#include <csignal>

struct xcb_connection_t;

namespace Tovra
{
// [window thread]  Around whatever may write to the connection: a flush, a wait for a reply, a large request.
class X11PipeGuard
{
public:
    explicit X11PipeGuard(xcb_connection_t* guarded);
    ~X11PipeGuard();
    X11PipeGuard(const X11PipeGuard&) = delete;
    X11PipeGuard& operator=(const X11PipeGuard&) = delete;

private:
    xcb_connection_t* const connection;
    sigset_t before;
    bool isOurs = false; // a signal that comes now, and none that came before
};
}
