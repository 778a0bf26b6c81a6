// SPDX-License-Identifier: GPL-3.0-or-later
// A chunk of parameter values ("ppCh") as bytes: each value stands under its parameter's id text, so that it
// survives reordering and additions. What parameters there are, the chunk does not know: CPropertyManager
// puts values in and takes them out.
//
//   header   48 bytes: "ppCh", zero filled to 20 bytes, then seven integers: header size, version, whether
//            compressed, stored size, raw size, record size, record count
//   data     the records, as they are or as one zlib stream
//   record   64 bytes: id text (52 bytes with its NUL), value, minimum, maximum
//
// Integers have 32 bits; they and the single-precision floats are little-endian on every machine. Minimum and
// maximum are those at the time of saving, for people: no reader uses them.
#pragma once

#include "Orbel/storage/Diagnosis.h"
#include "Orbel/storage/Packing.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Orbel
{
// [window thread] [worker]  One thread at a time; the getters may be called by several.
class ParameterChunk
{
public:
    // Writing: a record for each parameter, in their order. An id is cut to its field.
    void append(std::string_view id, float value, float minimum, float maximum);
    // A record of zeros, which no reader finds a parameter for.
    void appendEmpty();
    // The chunk as bytes; empty if it would be more than 64 MiB.
    std::string bytes() const;

    // Reading, in place of what was here. Whatever lies ahead of the chunk is skipped, and of two chunks the
    // first counts. A chunk that fails any check is refused as a whole, and then there are no records.
    Diagnosis read(std::string_view data, UnpackingAllowance& allowance);
    Diagnosis read(std::string_view data)
    {
        UnpackingAllowance any;
        return read(data, any);
    }

    bool empty() const { return count == 0; }
    size_t size() const { return count; }
    // By index below size(). An id ends with its field at the latest; a value may be a NaN.
    std::string_view id(size_t index) const;
    float value(size_t index) const;

private:
    static constexpr size_t kRecordSize = 64;

    struct Header;
    static Diagnosis checkHeader(std::string_view chunk, const Header& header, UnpackingAllowance& allowance);
    Diagnosis readRecords(std::string_view chunk, const Header& header);

    std::string records;
    size_t recordSize = kRecordSize; // bytes from one record to the next; other versions may have longer ones
    size_t count = 0;
};
}
