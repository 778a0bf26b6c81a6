// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace Tovra
{
namespace
{
constexpr int collectMilliseconds = 20;

std::vector<char*> pointers(std::vector<std::string>& texts)
{
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (std::string& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

std::vector<std::string> environmentWith(const std::vector<std::string>& added)
{
    std::vector<std::string> result = added; // the first of a name counts
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable)
        result.emplace_back(*variable);
    return result;
}

// Programs that were killed and have not ended yet: nobody waits for them, the run loop asks now and then.
class KilledProcesses
{
public:
    static KilledProcesses& all()
    {
        static KilledProcesses processes;
        return processes;
    }

    void add(pid_t process)
    {
        processes.push_back(process);
        timer.start(collectMilliseconds, [this] { collect(); });
    }

private:
    void collect()
    {
        std::erase_if(processes, [](pid_t process) { return waitpid(process, nullptr, WNOHANG) != 0; });
        if (processes.empty())
            timer.stop();
    }

    std::vector<pid_t> processes;
    RepeatingTimer timer;
};

// With output as its standard output, and nothing else of ours. 0 if it did not start.
pid_t spawn(std::vector<std::string> words, std::vector<std::string> environment, int output)
{
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    if (posix_spawn_file_actions_init(&files) != 0)
        return 0;
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    pid_t started = 0;
    if (posix_spawnattr_init(&attributes) == 0)
    {
        // A host may have blocked or ignored signals that the program counts on.
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&attributes, &none);
        posix_spawnattr_setsigdefault(&attributes, &all);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        if (posix_spawnp(&started, words[0].c_str(), &files, &attributes, pointers(words).data(),
                         pointers(environment).data()) != 0)
            started = 0;
        posix_spawnattr_destroy(&attributes);
    }
    posix_spawn_file_actions_destroy(&files);
    return started;
}
}

ChildProcess::~ChildProcess()
{
    kill();
    closeOutput();
}

bool ChildProcess::isInstalled(const char* program)
{
    const char* path = std::getenv("PATH");
    std::string_view rest = path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin";
    while (!rest.empty())
    {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(folder.size() + 1, rest.size()));
        if (!folder.empty() && access((std::string(folder) + "/" + program).c_str(), X_OK) == 0)
            return true;
    }
    return false;
}

bool ChildProcess::start(const std::vector<std::string>& words, const std::vector<std::string>& environment,
                         std::function<void()> ended)
{
    std::array<int, 2> ends;
    if (words.empty() || process != 0 || pipe2(ends.data(), O_CLOEXEC) != 0)
        return false;
    process = spawn(words, environmentWith(environment), ends[1]);
    close(ends[1]);
    source = ends[0];
    if (process == 0)
    {
        closeOutput();
        return false;
    }
    whenEnded = std::move(ended);
    fcntl(source, F_SETFL, O_NONBLOCK);
    watch.start(source, [this] { read(); });
    return true;
}

void ChildProcess::read()
{
    std::array<char, 4096> piece;
    const ssize_t got = ::read(source, piece.data(), piece.size());
    if (got < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (got <= 0)
    {
        closeOutput();
        collector.start(collectMilliseconds, [this] { collect(); });
        return collect();
    }
    isTooMuch = isTooMuch || written.size() + std::size_t(got) > mostOutput;
    if (!isTooMuch)
        written.append(piece.data(), std::size_t(got));
}

void ChildProcess::closeOutput()
{
    watch.stop();
    if (source >= 0)
        close(source);
    source = -1;
}

void ChildProcess::collect()
{
    const pid_t ended = waitpid(process, &status, WNOHANG);
    if (ended == 0)
        return;
    if (ended < 0)
        status = -1;
    process = -1;
    collector.stop();
    if (const auto call = std::exchange(whenEnded, nullptr))
        call();
}

void ChildProcess::kill()
{
    if (!isRunning())
        return;
    if (waitpid(process, &status, WNOHANG) == 0)
    {
        ::kill(process, SIGKILL);
        KilledProcesses::all().add(process);
    }
    process = -1;
}

bool ChildProcess::succeeded() const
{
    if (process != -1 || isTooMuch)
        return false;
    return status == -1 ? !written.empty() : WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
}
