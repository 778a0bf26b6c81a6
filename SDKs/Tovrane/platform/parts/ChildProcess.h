// SPDX-License-Identifier: GPL-3.0-or-later
// A program that runs beside this one and writes an answer. The run loop reads what it writes; nothing waits
// for it. It inherits nothing but the environment, and ends with this object at the latest.
#pragma once

#include "Tovrane/base/RunLoop.h"

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace Tovra
{
// [window thread]
class ChildProcess
{
public:
    ChildProcess() = default;
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    static constexpr std::size_t mostOutput = std::size_t(1) << 20;

    // words: the program, looked for along PATH, and its arguments. environment: "NAME=value", added to that
    // of this process. False if it could not be started. Once for each object. ended is called once, by the
    // run loop, when the program has ended by itself; it may destroy this object.
    bool start(const std::vector<std::string>& words, const std::vector<std::string>& environment,
               std::function<void()> ended = {});

    bool isRunning() const { return process > 0; }
    // It has ended by itself with the exit code 0. If the exit code is unknown, because the host collects all
    // child processes itself, it must have written something. Then output is complete.
    bool succeeded() const;
    const std::string& output() const { return written; }

    // Whether PATH leads to a program of that name.
    static bool isInstalled(const char* program);

private:
    void read();
    void closeOutput();
    void collect();
    void kill();

    pid_t process = 0;
    int source = -1; // where it writes
    int status = -1; // as waitpid has it; -1 unknown
    bool isTooMuch = false;
    std::string written;
    std::function<void()> whenEnded;
    DescriptorWatch watch;
    RepeatingTimer collector;
};
}
