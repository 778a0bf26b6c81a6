// SPDX-License-Identifier: GPL-3.0-or-later
// The clock of the user interface.
#pragma once

#include <cstdint>

namespace Core::Time
{
// [any thread]  Milliseconds since some moment in the past; never runs backwards with the wall clock,
// wraps to 0 after 2^32 - 1 (49.7 days), so compare by difference in uint32_t.
uint32_t getTicks();
}
