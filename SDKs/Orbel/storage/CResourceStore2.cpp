// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/CResourceStore2.h"

#include "CORE/ForeignData.h"
#include "Orbel/storage/Packing.h"
#include "Orbel/storage/ResourceLayout.h"

#include <algorithm>
#include <cstring>

using namespace std::literals;
using Orbel::cutOff;
using Orbel::damaged;
using Orbel::quoted;
using Orbel::refused;
using namespace Orbel::ResourceLayout;
using std::string_view;

namespace
{
constexpr std::uint64_t indexSlack = 100;   // by how much an index may be longer than it says
constexpr std::uint64_t resourceSlack = 20; // and a resource

// The bytes of data from offset on, up to length of them; nothing if they are not all there.
std::optional<string_view> part(string_view data, std::uint64_t offset, std::uint64_t length)
{
    if (offset + length > data.size())
        return {};
    return data.substr(offset, length);
}
}

CResourceStore2::CResourceStore2(const char* data, long size)
{
    diagnosis = readBlock({data ? data : "", data && size > 0 ? size_t(size) : 0});
}

Orbel::Diagnosis CResourceStore2::readBlock(string_view whole)
{
    if (whole.size() < block::size)
        return refused(whole.size(), cutOff(whole.size(), block::size) + " of its header");
    if (!whole.starts_with(block::magic))
        return refused(0, "it begins with " + quoted(whole.substr(0, block::magic.size())));
    const std::uint64_t start = Core::readLittle32(whole.data() + block::indexOffset);
    const auto header = part(whole, start, indexHeader::size);
    if (!header)
        return refused(whole.size(),
                       cutOff(whole.size(), start + indexHeader::size) + " of its index header");
    const auto field = [&](size_t at) -> std::uint64_t { return Core::readLittle32(header->data() + at); };
    const std::uint64_t indexStart = start + indexHeader::size, indexSize = field(indexHeader::storedSize);
    const std::uint64_t base = start + field(indexHeader::payloadOffset);
    const auto stored = part(whole, indexStart, indexSize);
    if (!stored || base > whole.size())
        return refused(whole.size(), cutOff(whole.size(), std::max(indexStart + indexSize, base)));
    std::string index;
    if (!Orbel::unpack(*stored, field(indexHeader::rawSize) + indexSlack, index))
        return refused(indexStart, "its index does not unpack");
    payload = whole.substr(base);
    Orbel::Diagnosis found = readEntries(index, field(indexHeader::entryCount));
    found.at += found.taken ? base : 0;
    return found;
}

Orbel::Diagnosis CResourceStore2::readEntries(string_view index, std::uint64_t count)
{
    if (count * entry::size > index.size())
        return refused(index.size(), "its index ends after " + std::to_string(index.size() / entry::size) +
                                         " of " + std::to_string(count) + " resources");
    Orbel::Diagnosis first;
    for (const char* at = index.data(); count > 0; --count, at += entry::size)
    {
        entries.push_back({.name = {at, strnlen(at, entry::nameSize)},
                           .rawSize = Core::readLittle32(at + entry::rawSize),
                           .storedSize = std::int32_t(Core::readLittle32(at + entry::storedSize)),
                           .offset = Core::readLittle32(at + entry::offset)});
        if (first.isSound())
            first = checkEntry(entries.back());
    }
    return first;
}

Orbel::Diagnosis CResourceStore2::checkEntry(const Entry& entry) const
{
    const std::uint64_t end = entry.offset + std::uint64_t(entry.storedLength());
    if (end <= payload.size())
        return {};
    return damaged(payload.size(), "its resource " + quoted(entry.name) + ": " + cutOff(payload.size(), end) +
                                       " of the payload");
}

const CResourceStore2::Entry* CResourceStore2::findEntry(string_view name) const
{
    if (name.size() >= entry::nameSize) // a name that fills its field has no end, and matches nothing
        return nullptr;
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& one) { return one.name == name; });
    return found == entries.end() ? nullptr : &*found;
}

std::optional<std::string> CResourceStore2::read(const char* name) const
{
    const Entry* const found = name ? findEntry(name) : nullptr;
    if (!found)
        return {};
    const std::uint64_t length = found->storedLength();
    const auto stored = part(payload, found->offset, length);
    if (!stored || length > Core::kLargestForeignSize)
        return {};

    std::string resource;
    if (found->isPacked())
    {
        if (!Orbel::unpack(*stored, found->rawSize + resourceSlack, resource))
            return {};
    }
    else
    {
        resource = *stored;
        Orbel::scramble(resource);
    }
    return resource;
}

char* CResourceStore2::getResource(const char* name, unsigned long& size)
{
    auto resource = read(name);
    size = resource ? resource->size() : 0;
    if (!resource)
        return nullptr;
    return handedOut.emplace_back(std::make_unique<std::string>(std::move(*resource)))->data();
}

void CResourceStore2::freeResource(const char* pointer)
{
    std::erase_if(handedOut, [&](const auto& buffer) { return buffer->data() == pointer; });
}
