// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/ParameterChunk.h"

#include "CORE/ForeignData.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace Orbel
{
namespace
{
namespace header
{
constexpr size_t headerSize = 20;
constexpr size_t version = 24;
constexpr size_t compressed = 28;
constexpr size_t storedSize = 32; // bytes of the data as they stand in the chunk
constexpr size_t rawSize = 36;    // bytes of all records
constexpr size_t recordSize = 40;
constexpr size_t recordCount = 44;
constexpr size_t size = 48;
}

namespace record
{
constexpr size_t idSize = 52; // its NUL included
constexpr size_t value = 52;
constexpr size_t minimum = 56;
constexpr size_t maximum = 60;
constexpr size_t leastSize = 56; // id and value
}

using namespace std::literals;

constexpr std::string_view chunkID = "ppCh\0"sv; // as a text with its end
constexpr std::uint32_t writtenVersion = 4096;
constexpr std::uint32_t highestVersion = 0xffffff;
constexpr size_t compressorSlack = 12;

void writeFloat(char* to, float number)
{
    Core::writeLittle32(to, std::bit_cast<std::uint32_t>(number));
}

void writeHeader(char* to, size_t recordSize, size_t count, size_t storedSize)
{
    const auto put = [&](size_t at, size_t word) { Core::writeLittle32(to + at, std::uint32_t(word)); };
    chunkID.copy(to, chunkID.size());
    put(header::headerSize, header::size);
    put(header::version, writtenVersion);
    put(header::compressed, 1);
    put(header::storedSize, storedSize);
    put(header::rawSize, count * recordSize);
    put(header::recordSize, recordSize);
    put(header::recordCount, count);
}
}

// 64 bits each, so that no sum or product of them wraps.
struct ParameterChunk::Header
{
    std::uint64_t dataOffset, version, compressed, storedSize, rawSize, recordSize, recordCount;

    explicit Header(std::string_view chunk)
    {
        const auto field = [&](size_t at) -> std::uint64_t { return Core::readLittle32(chunk.data() + at); };
        version = field(header::version);
        compressed = field(header::compressed);
        storedSize = field(header::storedSize);
        rawSize = field(header::rawSize);
        recordSize = field(header::recordSize);
        recordCount = field(header::recordCount);
        dataOffset = compressed ? field(header::headerSize) : header::size;
    }

    // The sizes of a good chunk agree: records and data are both as long as the raw size, once unpacked. The
    // format's own rule is that their sum is twice that size, which leaves uncompressed data its slack.
    bool sizesAgree() const
    {
        const std::uint64_t unpacked = compressed ? rawSize : storedSize;
        const std::uint64_t all = recordSize * recordCount;
        return unpacked <= rawSize + compressorSlack && all <= unpacked && unpacked + all == 2 * rawSize;
    }
};

void ParameterChunk::append(std::string_view id, float value, float minimum, float maximum)
{
    appendEmpty();
    char* const to = records.data() + records.size() - kRecordSize;
    id.copy(to, record::idSize - 1);
    writeFloat(to + record::value, value);
    writeFloat(to + record::minimum, minimum);
    writeFloat(to + record::maximum, maximum);
}

void ParameterChunk::appendEmpty()
{
    records.append(kRecordSize, '\0');
    ++count;
}

std::string ParameterChunk::bytes() const
{
    if (records.size() > Core::kLargestForeignSize)
        return {};
    const auto packed = pack(records, records.size() + compressorSlack);
    if (!packed)
        return {};
    std::string out(header::size, '\0');
    writeHeader(out.data(), kRecordSize, count, packed->size());
    return out += *packed;
}

Diagnosis ParameterChunk::read(std::string_view data, UnpackingAllowance& allowance)
{
    *this = {};
    const size_t start = data.find(chunkID);
    if (start == data.npos)
        return refused(0, "there is no \"ppCh\" in it");
    const std::string_view chunk = data.substr(start);
    if (chunk.size() < header::size)
        return refused(data.size(), cutOff(chunk.size(), header::size) + " of its header");
    const Header header(chunk);
    Diagnosis found = checkHeader(chunk, header, allowance);
    if (found.taken)
        found = readRecords(chunk, header);
    found.at += start;
    return found;
}

Diagnosis ParameterChunk::checkHeader(std::string_view chunk, const Header& header,
                                      UnpackingAllowance& allowance)
{
    const auto number = [](std::uint64_t value) { return std::to_string(value); };
    if (header.storedSize > Core::kLargestForeignSize || header.dataOffset + header.storedSize > chunk.size())
        return refused(chunk.size(), cutOff(chunk.size(), header.dataOffset + header.storedSize));
    if (header.version > highestVersion)
        return refused(header::version, "its version is " + number(header.version) + ", and " +
                                            number(highestVersion) + " is the highest known");
    if (header.rawSize > Core::kLargestForeignSize || !allowance.take(header.rawSize))
        return refused(header::rawSize,
                       "it would unpack to " + number(header.rawSize) + " bytes, which is too much");
    if (header.recordCount == 0)
        return refused(header::recordCount, "it holds no values");
    if (header.recordSize < record::leastSize)
        return refused(header::recordSize, "its values have " + number(header.recordSize) +
                                               " bytes each, and need " + number(record::leastSize));
    if (!header.sizesAgree())
        return refused(header::rawSize, "its sizes do not agree: " + number(header.recordCount) +
                                            " values of " + number(header.recordSize) + " bytes in " +
                                            number(header.rawSize));
    return {};
}

// The header was checked. Copies the records, or unpacks them if they are packed.
Diagnosis ParameterChunk::readRecords(std::string_view chunk, const Header& header)
{
    const std::string_view stored = chunk.substr(header.dataOffset, header.storedSize);
    const bool whole =
        !header.compressed || (unpack(stored, header.rawSize, records) && records.size() == header.rawSize);
    if (!whole)
    {
        records.clear();
        return refused(header.dataOffset, "its data does not unpack");
    }
    if (!header.compressed)
        records = stored;
    recordSize = header.recordSize;
    count = header.recordCount;
    return {};
}

std::string_view ParameterChunk::id(size_t index) const
{
    const char* const from = records.data() + index * recordSize;
    return {from, strnlen(from, record::idSize)};
}

float ParameterChunk::value(size_t index) const
{
    return std::bit_cast<float>(Core::readLittle32(records.data() + index * recordSize + record::value));
}
}
