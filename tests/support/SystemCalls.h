// Counts the system calls of a piece of work, which runs in a process of its own.
#pragma once

#include <csignal>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

struct SystemCalls
{
    std::map<unsigned long, int> counts; // by number
    bool succeeded = false;              // what the work answered

    int of(std::initializer_list<unsigned long> numbers) const
    {
        int sum = 0;
        for (const unsigned long number : numbers)
            if (const auto found = counts.find(number); found != counts.end())
                sum += found->second;
        return sum;
    }
};

// Nothing if no process may be traced here.
inline std::optional<SystemCalls> countSystemCalls(const std::function<bool()>& work)
{
    const pid_t child = fork();
    if (child == 0)
    {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(2);
        raise(SIGSTOP);
        _exit(work() ? 0 : 1);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child)
        return {};
    SystemCalls calls;
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
    while (WIFSTOPPED(status))
    {
        __ptrace_syscall_info info{};
        if (ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info) > 0 &&
            info.op == PTRACE_SYSCALL_INFO_ENTRY)
            ++calls.counts[info.entry.nr];
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        waitpid(child, &status, 0);
    }
    calls.succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return WIFEXITED(status) && WEXITSTATUS(status) == 2 ? std::nullopt : std::optional(calls);
}
