#include "Orbel/CPropertyManager.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <span>
#include <string_view>
#include <zlib.h>

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
constexpr std::uint64_t sizeLimit = 64u << 20; // of anything that a chunk may ask for
constexpr size_t compressorSlack = 12;

std::uint32_t readU32(const char* from)
{
    std::uint32_t word = 0;
    for (int i = 3; i >= 0; --i)
        word = word << 8 | static_cast<unsigned char>(from[i]);
    return word;
}

void writeU32(char* to, std::uint32_t word)
{
    for (int i = 0; i < 4; ++i)
        to[i] = static_cast<char>(word >> 8 * i);
}

void writeF32(char* to, float number)
{
    writeU32(to, std::bit_cast<std::uint32_t>(number));
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
    writeU32(to + header::headerSize, header::size);
    writeU32(to + header::version, writtenVersion);
    writeU32(to + header::compressed, 1);
    writeU32(to + header::storedSize, std::uint32_t(storedSize));
    writeU32(to + header::rawSize, std::uint32_t(count * record::size));
    writeU32(to + header::recordSize, record::size);
    writeU32(to + header::recordCount, std::uint32_t(count));
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
    const auto field = [&](size_t offset) -> std::uint64_t { return readU32(chunk.data() + offset); };

    const bool compressed = field(header::compressed) != 0;
    const std::uint64_t offset = compressed ? field(header::headerSize) : header::size;
    const std::uint64_t storedSize = field(header::storedSize);
    if (storedSize > sizeLimit || offset + storedSize > chunk.size())
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
    if (chunk.rawSize > sizeLimit || unpacked > chunk.rawSize + compressorSlack)
        return false;
    if (chunk.recordCount == 0 || chunk.recordSize < record::leastSize)
        return false;
    const std::uint64_t records = chunk.recordSize * chunk.recordCount;
    return records <= unpacked && unpacked + records == 2 * chunk.rawSize;
}

// The records of a chunk, unpacked into memory of their own where they are compressed.
class Records
{
public:
    explicit Records(const ChunkView& chunk)
    {
        if (!chunk.compressed)
        {
            bytes = chunk.stored;
            return;
        }
        work.reset(new (std::nothrow) char[chunk.rawSize]);
        uLongf length = chunk.rawSize;
        if (work &&
            uncompress(reinterpret_cast<Bytef*>(work.get()), &length,
                       reinterpret_cast<const Bytef*>(chunk.stored.data()), chunk.stored.size()) == Z_OK &&
            length == chunk.rawSize)
            bytes = {work.get(), length};
    }

    // Empty if they could not be unpacked.
    std::span<const char> get() const { return bytes; }

private:
    std::unique_ptr<char[]> work;
    std::span<const char> bytes;
};

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
    if (list.size() > sizeLimit / record::size)
        return 0;
    std::vector<char> records(list.size() * record::size);
    for (size_t i = 0; i < list.size(); ++i)
        if (list[i])
            writeRecord(records.data() + i * record::size, *list[i]);

    chunk.resize(header::size + records.size() + compressorSlack);
    uLongf stored = records.size() + compressorSlack;
    if (compress2(reinterpret_cast<Bytef*>(chunk.data() + header::size), &stored,
                  reinterpret_cast<const Bytef*>(records.data()), records.size(), 9) != Z_OK)
        return 0;
    writeHeader(chunk.data(), list.size(), stored);
    *data = chunk.data();
    return header::size + stored;
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
    const Records records(*found);
    if (records.get().empty())
        return;
    for (std::uint64_t i = 0; i < found->recordCount; ++i)
    {
        const char* from = records.get().data() + i * found->recordSize;
        const std::string id(from + record::id, strnlen(from + record::id, record::idSize));
        ParameterProperty* property = propertyOfRecord(id, loadSuffix, converter);
        if (property &&
            std::find(ignored.begin(), ignored.end(), property->getParameterID()) == ignored.end())
            property->setValue(std::bit_cast<float>(readU32(from + record::value)));
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
