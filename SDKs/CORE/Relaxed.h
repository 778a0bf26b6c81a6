// SPDX-License-Identifier: GPL-3.0-or-later
// A word that several threads read and write, without order between them: property values, flags,
// counters. Reads and writes cost what a plain word costs; there is no lock and no fence, so it carries
// a value across but does not announce other data.
#pragma once

#include <atomic>

namespace Core
{
template <typename T>
class Relaxed
{
public:
    constexpr Relaxed() = default;
    constexpr Relaxed(T initial) : word(initial) {}
    Relaxed(const Relaxed& other) : word(other.load()) {}
    Relaxed& operator=(const Relaxed& other) { return *this = other.load(); }
    Relaxed& operator=(T value)
    {
        word.store(value, std::memory_order_relaxed);
        return *this;
    }

    // [any thread]
    operator T() const { return load(); }
    T load() const { return word.load(std::memory_order_relaxed); }
    // Writes next only if the word still holds expected, bit for bit; says whether it did.
    bool replace(T expected, T next)
    {
        return word.compare_exchange_strong(expected, next, std::memory_order_relaxed);
    }

private:
    static_assert(std::atomic<T>::is_always_lock_free);
    std::atomic<T> word{};
};
}
