// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/base/VirtualClock.h"

#include <poll.h>
#include <stdexcept>

namespace Tovra
{
int VirtualClock::wait(pollfd* descriptors, unsigned long count, int milliseconds)
{
    const int ready = poll(descriptors, count, 0);
    if (ready == 0 && milliseconds < 0)
        throw std::runtime_error("would wait for ever");
    if (ready == 0)
        advance(milliseconds);
    return ready;
}
}
