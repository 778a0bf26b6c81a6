// SPDX-License-Identifier: GPL-3.0-or-later
// The process of host_window.cpp, from the test's side.
#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

class HostWindow
{
public:
    // Its window is there when this returns. Throws without an X server.
    HostWindow();
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    // Takes what it has written into lines.
    void read();
    std::uint32_t window() const { return number; }
    void* parent() const { return reinterpret_cast<void*>(std::uintptr_t(number)); }
    void command(const std::string& line);
    // Its lines so far, without the first one.
    std::vector<std::string> lines;
    std::size_t count(const std::string& line) const;

private:
    void awaitWindow();

    pid_t process = 0;
    int toIt = -1;
    int fromIt = -1;
    std::string partial;
    std::uint32_t number = 0;
};
