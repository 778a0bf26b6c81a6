// SPDX-License-Identifier: GPL-3.0-or-later
// A header followed by named records: the format that preset stores and the older resource blocks share.
//
//   header   the id, zero filled, and at fields five integers: header size, version, compressed (0 or 1),
//            stored size, raw size
//   data     stored size bytes from header size on: the records, raw size bytes, as one zlib stream or as
//            they are; then folded; then perhaps scrambled
//   record   tag, name, and at recordFields three integers: header size, version, length; from recordSize on
//            length bytes of payload. The next record begins header size + length bytes on.
//
// Integers have 32 bits and are little-endian. What a layout leaves between its fields is written as zero
// and is never read.
#pragma once

#include "Orbel/storage/Diagnosis.h"
#include "Orbel/storage/Packing.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Orbel
{
struct ContainerLayout
{
    size_t idSize;
    size_t fields;
    size_t size; // of the header
    bool scrambled;

    std::string_view tag; // its NUL included; the name follows
    size_t nameSize;
    size_t recordFields;
    size_t recordSize;
};

// One record: where its payload stands in the raw bytes, and the hash of its name.
struct ChunkTable
{
    std::uint32_t nameHash;
    std::uint32_t data;
    std::uint32_t length;
};

// [window thread] [worker]  One thread at a time; find may be called by several.
class RecordContainer
{
public:
    // The layout has to outlive the container.
    explicit RecordContainer(const ContainerLayout& of) : layout(&of) {}

    // Forgets what was here and reads a container, which is unfolded and unscrambled where it stands. Refused
    // if it is cut short, has another id or a version above 0x1000, or would need more than 64 MiB or what is
    // allowed. Data that cannot be unpacked holds no record; records end ahead of the first that is damaged,
    // reaches beyond the end, or runs into itself.
    Diagnosis read(const char* id, std::span<char> data, UnpackingAllowance& allowance);

    // Appends a record with a name cut to its field. Ignored if the container would grow beyond 64 MiB.
    void append(std::string_view name, std::string_view payload);

    // The container as bytes, of all that was read and appended. (Scrambled ones are only read.)
    std::vector<char> image(const char* id) const;

    // The first record read of that name. Its data is null if there is none, and not if it is empty.
    std::string_view find(std::string_view name) const;

    bool empty() const { return raw.empty(); }
    // The records read; appended ones are not counted, and not found.
    int getCount() const { return int(table.size()); }
    void clear();

private:
    struct Header
    {
        // 64 bits each, so that no sum of them wraps.
        std::uint64_t headerSize, version, compressed, storedSize, rawSize;
    };

    Diagnosis readHeader(const char* id, std::string_view data, Header& header) const;
    bool unpackRecords(std::span<char> stored, const Header& header);
    size_t walk();
    std::string_view nameAhead(size_t payload) const; // of the record with the payload there

    const ContainerLayout* layout;
    std::string raw;               // the records, one after another
    std::vector<ChunkTable> table; // by hash, then by place: a hostile container may have a million records
};
}
