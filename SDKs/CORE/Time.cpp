// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/Time.h"

#include <chrono>

namespace Core::Time
{
uint32_t getTicks()
{
    using namespace std::chrono;
    return uint32_t(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}
}
