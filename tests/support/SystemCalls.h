// SPDX-License-Identifier: GPL-3.0-or-later
// Watches the system calls of a piece of work, which runs in a process of its own.
#pragma once

#include <csignal>
#include <functional>
#include <optional>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

// Runs the work, and asks goOn at the edges of each call: before it, with its number, and after it, with -1.
// If goOn answers false, the process is killed there. What the work answered, false if it was killed; nothing
// if no process may be traced here.
inline std::optional<bool> watchSystemCalls(const std::function<bool()>& work,
                                            const std::function<bool(long)>& goOn)
{
    constexpr int cannotTrace = 2;
    const pid_t child = fork();
    if (child == 0)
    {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(cannotTrace);
        raise(SIGSTOP);
        _exit(work() ? 0 : 1);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
        return {};
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
    while (WIFSTOPPED(status))
    {
        __ptrace_syscall_info info{};
        ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info);
        const bool isEntry = info.op == PTRACE_SYSCALL_INFO_ENTRY;
        if (!goOn(isEntry ? long(info.entry.nr) : -1))
            kill(child, SIGKILL);
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == cannotTrace)
        return {};
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
