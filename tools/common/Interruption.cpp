// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/common/Interruption.h"

#include <csignal>
#include <initializer_list>

namespace lodex
{
static volatile std::sig_atomic_t noted = 0;

void noteInterruptions()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
    {
        struct sigaction action
        {
        };
        sigaction(signal, nullptr, &action);
        if (action.sa_handler == SIG_IGN) // nohup
            continue;
        action.sa_handler = [](int number) { noted = number; };
        action.sa_flags = SA_RESETHAND; // a second one ends the process
        sigaction(signal, &action, nullptr);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

void stopIfInterrupted()
{
    if (noted != 0)
        throw Interrupted{noted};
}
}
