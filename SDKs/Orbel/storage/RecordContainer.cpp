// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/RecordContainer.h"

#include "CORE/ForeignData.h"
#include "Orbel/storage/Packing.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <utility>

namespace Orbel
{
namespace
{
constexpr std::uint32_t currentVersion = 0x1000; // of headers and records; also the highest that is read
constexpr size_t packingSlack = 12;              // what packing may add before it is given up

// 64 bits each, so that no sum of them wraps.
template <size_t count>
std::array<std::uint64_t, count> readFields(const char* from)
{
    std::array<std::uint64_t, count> fields;
    for (size_t i = 0; i < count; ++i)
        fields[i] = Core::readLittle32(from + 4 * i);
    return fields;
}

template <size_t count>
void writeFields(char* to, const std::array<std::uint64_t, count>& fields)
{
    for (size_t i = 0; i < count; ++i)
        Core::writeLittle32(to + 4 * i, std::uint32_t(fields[i]));
}

std::uint32_t hashOf(std::string_view name)
{
    return std::uint32_t(std::hash<std::string_view>()(name));
}

std::string_view textOf(const char* from, size_t most)
{
    return {from, strnlen(from, most)};
}
}

void RecordContainer::clear()
{
    std::string().swap(raw); // gives the memory back, as an assignment would not
    std::vector<ChunkTable>().swap(table);
}

Diagnosis RecordContainer::readHeader(const char* id, std::string_view data, Header& header) const
{
    if (data.size() < layout->size)
        return refused(data.size(), cutOff(data.size(), layout->size) + " of its header");
    if (std::strncmp(data.data(), id, layout->idSize) != 0)
        return refused(0, "its id is " + quoted(textOf(data.data(), layout->idSize)) + ", not " + quoted(id));
    const auto [headerSize, version, compressed, storedSize, rawSize] =
        readFields<5>(data.data() + layout->fields);
    header = {headerSize, version, compressed, storedSize, rawSize};
    if (data.size() < headerSize + storedSize)
        return refused(data.size(), cutOff(data.size(), headerSize + storedSize));
    if (version > currentVersion)
        return refused(layout->fields + 4, "its version is " + std::to_string(version) + ", and " +
                                               std::to_string(currentVersion) + " is the highest known");
    if (storedSize > Core::kLargestForeignSize)
        return refused(layout->fields + 12,
                       "it has " + std::to_string(storedSize) + " bytes, which is too much");
    return {};
}

Diagnosis RecordContainer::read(const char* id, std::span<char> data, UnpackingAllowance& allowance)
{
    clear();
    Header header{};
    if (Diagnosis found = readHeader(id, {data.data(), data.size()}, header); !found.taken)
        return found;
    if (header.rawSize > Core::kLargestForeignSize || !allowance.take(header.rawSize))
        return refused(layout->fields + 16,
                       "it would unpack to " + std::to_string(header.rawSize) + " bytes, which is too much");
    if (!unpackRecords(data.subspan(header.headerSize, header.storedSize), header))
        return damaged(header.headerSize, "its data does not unpack");
    const size_t end = walk();
    if (end == header.rawSize)
        return {};
    const std::string words =
        table.empty() ? "its first chunk is damaged" : "its chunks end after " + std::to_string(table.size());
    return damaged(end, words + ", at byte " + std::to_string(end) + " of " + std::to_string(header.rawSize));
}

bool RecordContainer::unpackRecords(std::span<char> stored, const Header& header)
{
    if (layout->scrambled)
        scramble(stored);
    unfold(stored);
    if (header.compressed != 0)
        return unpack({stored.data(), stored.size()}, header.rawSize, raw);
    raw.assign(stored.data(), std::min(header.storedSize, header.rawSize));
    return true;
}

// The byte after the last record that is whole.
size_t RecordContainer::walk()
{
    const size_t end = raw.size();
    size_t at = 0;
    while (end - at >= layout->recordSize && std::string_view(raw).substr(at).starts_with(layout->tag))
    {
        const auto [headerSize, version, length] = readFields<3>(raw.data() + at + layout->recordFields);
        const std::uint64_t step = headerSize + length;
        const bool inside = step <= end - at && layout->recordSize + length <= end - at;
        if (!inside || step < layout->recordSize || version > currentVersion)
            break;
        table.push_back({.nameHash = hashOf(nameAhead(at + layout->recordSize)),
                         .data = std::uint32_t(at + layout->recordSize),
                         .length = std::uint32_t(length)});
        at += step;
    }
    std::sort(table.begin(), table.end(),
              [](const ChunkTable& a, const ChunkTable& b)
              { return std::pair(a.nameHash, a.data) < std::pair(b.nameHash, b.data); });
    return at;
}

std::string_view RecordContainer::nameAhead(size_t payload) const
{
    return textOf(raw.data() + payload - layout->recordSize + layout->tag.size(), layout->nameSize);
}

std::string_view RecordContainer::find(std::string_view name) const
{
    const std::uint32_t hash = hashOf(name);
    auto at =
        std::lower_bound(table.begin(), table.end(), hash,
                         [](const ChunkTable& record, std::uint32_t key) { return record.nameHash < key; });
    for (; at != table.end() && at->nameHash == hash; ++at)
        if (nameAhead(at->data) == name)
            return {raw.data() + at->data, at->length};
    return {};
}

void RecordContainer::append(std::string_view name, std::string_view payload)
{
    if (payload.size() > Core::kLargestForeignSize ||
        raw.size() + layout->recordSize + payload.size() > Core::kLargestForeignSize)
        return;
    std::string record(layout->recordSize, '\0');
    layout->tag.copy(record.data(), layout->tag.size());
    name.copy(record.data() + layout->tag.size(), layout->nameSize);
    writeFields<3>(record.data() + layout->recordFields,
                   {layout->recordSize, currentVersion, payload.size()});
    record += payload;
    raw += record; // in one: the payload may be a part of raw
}

std::vector<char> RecordContainer::image(const char* id) const
{
    const auto packed = pack(raw, raw.size() + packingSlack);
    const std::string& stored = packed ? *packed : raw;
    std::vector<char> out(layout->size + stored.size());
    textOf(id, layout->idSize).copy(out.data(), layout->idSize);
    writeFields<5>(out.data() + layout->fields,
                   {layout->size, currentVersion, packed ? 1u : 0u, stored.size(), raw.size()});
    const auto data = std::span(out).subspan(layout->size);
    std::copy(stored.begin(), stored.end(), data.begin());
    fold(data);
    return out;
}
}
