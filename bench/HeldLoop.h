// SPDX-License-Identifier: GPL-3.0-or-later
// Measures how long a host's event loop is held: the benchmark owns the loop like a host, and this clock
// looks at the time whenever the loop stops waiting and when it waits again. What lies between is time in
// which a host could do nothing else.
#pragma once

#include "Tovrane/base/Clock.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <poll.h>
#include <vector>

class HeldLoop : public Tovra::Clock
{
public:
    HeldLoop() { setCurrent(this); }
    ~HeldLoop() override { setCurrent(nullptr); }
    HeldLoop(const HeldLoop&) = delete;
    HeldLoop& operator=(const HeldLoop&) = delete;

    std::int64_t microseconds() override { return std::int64_t(now() * 1000.0); }
    int wait(pollfd* descriptors, unsigned long count, int milliseconds) override
    {
        held.push_back(now() - busySince);
        const int ready = poll(descriptors, count, milliseconds);
        busySince = now();
        return ready;
    }

    // Prints how long the loop was held since the last report.
    void report(const char* what)
    {
        std::sort(held.begin(), held.end());
        const auto at = [this](double share)
        { return held.empty() ? 0.0 : held[std::size_t(share * double(held.size() - 1))]; };
        std::printf("%-44s %6zu rounds  median %7.3f ms  99 %% %7.3f ms  longest %7.3f ms\n", what,
                    held.size(), at(0.5), at(0.99), at(1.0));
        held.clear();
    }

private:
    static double now()
    {
        using namespace std::chrono;
        return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
    }

    std::vector<double> held; // milliseconds, each time
    double busySince = now();
};
