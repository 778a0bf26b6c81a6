// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/lib/outline_cache.h"

#include <cstring>

namespace agg
{
std::uint64_t outline_cache::hash_of_key() const
{
    constexpr std::uint64_t prime = 0x100000001B3;
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const double number : m_key)
    {
        hash = (hash ^ std::bit_cast<std::uint64_t>(number)) * prime;
        hash ^= hash >> 32;
    }
    return hash;
}

outline_cache::shape& outline_cache::place_of(std::uint64_t hash)
{
    if (m_shapes.empty())
        m_shapes.resize(places);
    return m_shapes[hash % places];
}

bool outline_cache::is_of_key(const shape& known) const
{
    return known.key.size() == m_key.size() &&
           std::memcmp(known.key.data(), m_key.data(), m_key.size() * sizeof(double)) == 0;
}
}
