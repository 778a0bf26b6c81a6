// SPDX-License-Identifier: GPL-3.0-or-later
// What other threads have left for one property until the audio thread fetches it: see TimedValueInbox.
#pragma once

#include <atomic>
#include <cstdint>

namespace Orbel
{
class ParameterProperty;

// Belongs to the inbox of the effect whose property it is in: nobody else reads or writes it.
struct TimedValueSlot
{
    static constexpr std::uint64_t unlinked = ~std::uint64_t(0); // empty, and not in the chain

    std::atomic<std::uint64_t> word{unlinked};
    ParameterProperty* next = nullptr; // in the chain; read and written by whoever has the slot to itself
};
}
