// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/HostWindow.h"

#include <algorithm>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

HostWindow::HostWindow()
{
    int in[2];
    int out[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipes");
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, in[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, out[1], STDOUT_FILENO);
    char name[] = LODEX_HOST_WINDOW;
    char* words[] = {name, nullptr};
    if (posix_spawn(&process, name, &files, nullptr, words, environ) != 0)
        throw std::runtime_error("cannot start " LODEX_HOST_WINDOW);
    posix_spawn_file_actions_destroy(&files);
    close(in[0]);
    close(out[1]);
    toIt = in[1];
    fromIt = out[0];
    fcntl(fromIt, F_SETFL, O_NONBLOCK);
    awaitWindow();
    if (number == 0)
        throw std::runtime_error("no X server: see script/test_windows");
}

HostWindow::~HostWindow()
{
    close(toIt);
    close(fromIt);
    waitpid(process, nullptr, 0);
}

void HostWindow::read()
{
    char piece[256];
    for (ssize_t got; (got = ::read(fromIt, piece, sizeof piece)) > 0;)
        partial.append(piece, std::size_t(got));
    for (std::size_t end; (end = partial.find('\n')) != std::string::npos; partial.erase(0, end + 1))
    {
        const std::string line = partial.substr(0, end);
        if (line.starts_with("window "))
            number = std::uint32_t(std::stoul(line.substr(7)));
        else
            lines.push_back(line);
    }
}

void HostWindow::awaitWindow()
{
    constexpr int longest = 10000; // milliseconds
    for (pollfd waiting{fromIt, POLLIN, 0}; number == 0 && poll(&waiting, 1, longest) > 0;)
        read();
}

void HostWindow::command(const std::string& line)
{
    const std::string sent = line + "\n";
    if (write(toIt, sent.data(), sent.size()) != ssize_t(sent.size()))
        throw std::runtime_error("the host's window is gone");
}

std::size_t HostWindow::count(const std::string& line) const
{
    return std::size_t(std::count(lines.begin(), lines.end(), line));
}
