#include "Orbel/parameters/CPropertyManager.h"

#include "CORE/ForeignData.h"
#include "Orbel/storage/Packing.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

namespace Orbel
{
namespace
{
// The chunk: a header of 48 bytes, then its records, as they are or as one zlib stream. Integers have 32
// bits; they and the single-precision floats are little-endian on every machine.
namespace header
{
constexpr size_t id = 0; // "ppCh", zero filled to 20 bytes
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
constexpr size_t id = 0; // with its end
constexpr size_t idSize = 52;
constexpr size_t value = 52;
constexpr size_t minimum = 56; // the range is for the eye: it is not read
constexpr size_t maximum = 60;
constexpr size_t size = 64;
constexpr size_t leastSize = 56; // id and value
}

using namespace std::literals;

constexpr std::string_view chunkID = "ppCh\0"sv; // as a text with its end
constexpr std::uint32_t writtenVersion = 4096;
constexpr std::uint32_t highestVersion = 0xffffff;
constexpr size_t compressorSlack = 12;

void writeF32(char* to, float number)
{
    Core::writeLittle32(to, std::bit_cast<std::uint32_t>(number));
}

void writeRecord(char* to, const ParameterProperty& property)
{
    const size_t length = strnlen(property.getID(), record::idSize - 1);
    std::memcpy(to + record::id, property.getID(), length);
    writeF32(to + record::value, property.getCurrentValue());
    writeF32(to + record::minimum, property.getMin());
    writeF32(to + record::maximum, property.getMax());
}

void writeHeader(char* to, size_t count, size_t storedSize)
{
    chunkID.copy(to + header::id, chunkID.size());
    Core::writeLittle32(to + header::headerSize, header::size);
    Core::writeLittle32(to + header::version, writtenVersion);
    Core::writeLittle32(to + header::compressed, 1);
    Core::writeLittle32(to + header::storedSize, std::uint32_t(storedSize));
    Core::writeLittle32(to + header::rawSize, std::uint32_t(count * record::size));
    Core::writeLittle32(to + header::recordSize, record::size);
    Core::writeLittle32(to + header::recordCount, std::uint32_t(count));
}

// A chunk whose header holds together, and where its data lies within what was given. 64 bits each, so
// that no sum or product of them wraps.
struct ChunkView
{
    std::uint64_t rawSize, recordSize, recordCount;
    bool compressed;
    std::span<const char> stored;
};

std::optional<ChunkView> findChunk(std::string_view data)
{
    const size_t start = data.find(chunkID);
    if (start == data.npos || data.size() - start < header::size)
        return {};
    const std::string_view chunk = data.substr(start);
    const auto field = [&](size_t offset) -> std::uint64_t
    { return Core::readLittle32(chunk.data() + offset); };

    const bool compressed = field(header::compressed) != 0;
    const std::uint64_t offset = compressed ? field(header::headerSize) : header::size;
    const std::uint64_t storedSize = field(header::storedSize);
    if (storedSize > Core::kLargestForeignSize || offset + storedSize > chunk.size())
        return {};
    if (field(header::version) > highestVersion)
        return {};
    return ChunkView{field(header::rawSize), field(header::recordSize), field(header::recordCount),
                     compressed, std::span(chunk).subspan(offset, storedSize)};
}

// The sizes of a good chunk agree: records and data are both as long as the raw size, once unpacked. The
// format's own rule is that their sum is twice that size, which leaves uncompressed data its slack.
bool sizesAgree(const ChunkView& chunk)
{
    const std::uint64_t unpacked = chunk.compressed ? chunk.rawSize : chunk.stored.size();
    if (chunk.rawSize > Core::kLargestForeignSize || unpacked > chunk.rawSize + compressorSlack)
        return false;
    if (chunk.recordCount == 0 || chunk.recordSize < record::leastSize)
        return false;
    const std::uint64_t records = chunk.recordSize * chunk.recordCount;
    return records <= unpacked && unpacked + records == 2 * chunk.rawSize;
}

// The records of a chunk, unpacked into work where they are packed. Empty if that fails.
std::span<const char> recordsOf(const ChunkView& chunk, std::string& work)
{
    if (!chunk.compressed)
        return chunk.stored;
    const bool whole = unpack({chunk.stored.data(), chunk.stored.size()}, chunk.rawSize, work) &&
                       work.size() == chunk.rawSize;
    return whole ? std::span<const char>(work) : std::span<const char>();
}

// The id with the suffix in place of its first number. A 0 is no number here, and what strtol takes for
// part of a number (blanks, a sign) goes with it.
std::string withSuffix(const std::string& id, int suffix)
{
    for (const char* at = id.c_str(); *at; ++at)
    {
        char* tail = nullptr;
        if (std::strtol(at, &tail, 10) != 0)
            return id.substr(0, size_t(at - id.c_str())) + std::to_string(suffix) + tail;
    }
    return id;
}

template <typename List>
auto* elementAt(const List& list, int index)
{
    return index >= 0 && size_t(index) < list.size() ? &*list[size_t(index)] : nullptr;
}
}

ParameterProperty* CPropertyManager::CreateProperty(const ParameterPropertySetup* setup)
{
    if (ParameterProperty* known = getProperty(setup->id.c_str()))
        return known;
    auto property = std::make_unique<ParameterProperty>();
    property->setup(setup);
    return append(std::move(property));
}

ParameterProperty* CPropertyManager::CreateProperty(const ParameterProperty* source)
{
    auto property = std::make_unique<ParameterProperty>();
    *property = *source;
    return append(std::move(property));
}

ParameterProperty* CPropertyManager::append(std::unique_ptr<ParameterProperty> property)
{
    if (property->isAutomateable())
    {
        property->setAutomationIndex(long(automatable.size()));
        automatable.push_back(property.get());
    }
    return properties.emplace_back(std::move(property)).get();
}

ParameterProperty* CPropertyManager::getProperty(int index) const
{
    return elementAt(properties, index);
}

ParameterProperty* CPropertyManager::getProperty(const char* id) const
{
    for (const auto& property : properties)
        if (id && property->hasID(id))
            return property.get();
    return nullptr;
}

ParameterProperty* CPropertyManager::getPropertyByID(long parameterId) const
{
    for (const auto& property : properties)
        if (property->getParameterID() == parameterId)
            return property.get();
    return nullptr;
}

ParameterProperty* CPropertyManager::getProperty_automateable(int index) const
{
    return elementAt(automatable, index);
}

void CPropertyManager::setAllParamsToDefault()
{
    for (const auto& property : properties)
        property->setValueToDefault();
}

unsigned long CPropertyManager::getChunk(char** data)
{
    std::vector<ParameterProperty*> all;
    for (const auto& property : properties)
        all.push_back(property.get());
    return getChunkFromList(data, all);
}

unsigned long CPropertyManager::getChunkFromList(char** data, const std::vector<ParameterProperty*>& list)
{
    chunk.clear();
    if (list.size() > Core::kLargestForeignSize / record::size)
        return 0;
    std::string records(list.size() * record::size, '\0');
    for (size_t i = 0; i < list.size(); ++i)
        if (list[i])
            writeRecord(records.data() + i * record::size, *list[i]);

    const auto packed = pack(records, records.size() + compressorSlack);
    if (!packed)
        return 0;
    chunk.resize(header::size);
    writeHeader(chunk.data(), list.size(), packed->size());
    chunk.insert(chunk.end(), packed->begin(), packed->end());
    *data = chunk.data();
    return chunk.size();
}

void CPropertyManager::setChunkWithLoadSuffix(const char* data, unsigned long size, int loadSuffix)
{
    setChunk(data, size, loadSuffix, {}, nullptr);
}

void CPropertyManager::setChunkWithIgnoreList(const char* data, unsigned long size,
                                              const std::vector<long>& ignored)
{
    setChunk(data, size, -1, ignored, nullptr);
}

void CPropertyManager::setChunk(const char* data, unsigned long size, int loadSuffix,
                                const std::vector<long>& ignored, IIDConverter* converter)
{
    const auto found = findChunk(data ? std::string_view(data, size) : std::string_view());
    if (!found || !sizesAgree(*found))
        return;
    std::string work;
    const auto records = recordsOf(*found, work);
    if (records.empty())
        return;
    for (std::uint64_t i = 0; i < found->recordCount; ++i)
    {
        const char* from = records.data() + i * found->recordSize;
        const std::string id(from + record::id, strnlen(from + record::id, record::idSize));
        ParameterProperty* property = propertyOfRecord(id, loadSuffix, converter);
        if (property &&
            std::find(ignored.begin(), ignored.end(), property->getParameterID()) == ignored.end())
            property->setValue(std::bit_cast<float>(Core::readLittle32(from + record::value)));
    }
}

ParameterProperty* CPropertyManager::propertyOfRecord(const std::string& id, int loadSuffix,
                                                      IIDConverter* converter) const
{
    if (converter)
        return getProperty(converter->convertID(id.c_str()));
    return getProperty(loadSuffix < 0 ? id.c_str() : withSuffix(id, loadSuffix).c_str());
}
}
