#include "tools/preset/PresetExamination.h"

#include "CORE/ForeignData.h"
#include "CORE/Numbers.h"
#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/storage/CPresetStore.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"
#include "presets/OlderChunks.h"
#include "tools/common/Text.h"

#include <cstring>
#include <initializer_list>

namespace lodex
{
namespace
{
using namespace std::literals;

// Offsets.
namespace store
{
constexpr size_t idSize = 20;
constexpr size_t headerSize = 24;
constexpr size_t version = 28;
constexpr size_t compressed = 32;
constexpr size_t storedSize = 36;
constexpr size_t rawSize = 40;
constexpr size_t size = 44;
constexpr size_t recordSize = 40; // ahead of each chunk's bytes
constexpr std::uint64_t highestVersion = 0x1000;
}

// The older product's: header, then a count of parts of one size. Integers are big-endian.
struct TaggedForm
{
    std::string_view id; // with its end
    const char* parts;
    size_t key, count, size; // offsets of integers
    size_t first;            // offset of the parts
    size_t leastSize;        // of a part
};

namespace chunk = OLDPRESET::chunk;
namespace bank = OLDPRESET::bank;

constexpr TaggedForm taggedForms[] = {
    {chunk::id, "values", chunk::keyBlock, chunk::recordCount, chunk::recordSize, chunk::records,
     OLDPRESET::record::size},
    {bank::id, "presets", bank::keyBlock, bank::count, bank::stride, bank::entries,
     OLDPRESET::entry::records},
};

constexpr const char* chunkNames[] = {"SINGLEPRESET",    "PPDATA",     "SystemData",
                                      "ENV_TIME_ADJUST", "PresetName", "TEMPO"};

std::string_view chunkOf(const Orbel::CPresetStore& store, const char* name)
{
    char* bytes = nullptr;
    const long size = store.getChunk(name, &bytes);
    return {bytes, size_t(size)};
}

// Reads a chunk of parameters as the effect does, and counts.
class ParameterCount : Orbel::CPropertyManager::IIDConverter, Orbel::ParameterChangeListener
{
public:
    explicit ParameterCount(std::string_view chunk)
    {
        Orbel::CPropertyManager manager;
        for (const auto& row : DKS_Mini::ps_plain)
            manager.CreateProperty(&row)->AddListener(this, false);
        manager.setChunk(chunk.data(), chunk.size(), -1, {}, this);
        for (int i = 0; i < manager.getPropertyCount(); ++i)
            manager.getProperty(i)->ForgetListener(this);
    }

    // Empty if all is well.
    std::string problem(const char* what) const
    {
        if (records == 0)
            return std::string("its ") + what + " do not unpack";
        if (known == 0)
            return std::string("its ") + what + " are none of this effect";
        return written < known ? "a value in it is not a number" : "";
    }
    bool isUsable() const { return known > 0; }

private:
    const char* convertID(const char* id) override
    {
        ++records;
        for (const auto& row : DKS_Mini::ps_plain)
            if (row.id == std::string_view(id))
                return ++known, id;
        return nullptr;
    }
    void parameterChanged(Orbel::ParameterProperty*) override { ++written; }

    int records = 0;
    int known = 0;   // of these: ours
    int written = 0; // of these: taken
};

// What a chunk of parameters says that it unpacks to.
std::uint64_t unpackedSize(std::string_view chunk)
{
    constexpr size_t rawSize = 36;
    const size_t start = chunk.find("ppCh\0"sv);
    if (start == chunk.npos || chunk.size() - start < rawSize + 4)
        return 0;
    return Core::readLittle32(chunk.data() + start + rawSize);
}

// A store whose chunks are all of known names tells by its size whether one is missing at its end.
std::string problemOfChunks(const Orbel::CPresetStore& unpacked, std::uint64_t rawSize)
{
    int known = 0;
    std::uint64_t bytes = 0;
    for (const char* name : chunkNames)
        if (const auto chunk = chunkOf(unpacked, name); chunk.data())
        {
            ++known;
            bytes += store::recordSize + chunk.size();
        }
    if (known != unpacked.getChunkCount() || bytes >= rawSize)
        return {};
    return "its chunks end after " + std::to_string(known) + ", at byte " + std::to_string(bytes) + " of " +
           std::to_string(rawSize);
}

std::string problemOfTimeBase(const Orbel::CPresetStore& unpacked)
{
    const Sonvex::String text = unpacked.getString("ENV_TIME_ADJUST");
    if (text.empty() || isTimeBase(float(Core::parseDouble(text.c_str()))))
        return {};
    return "its time base is " + inQuotes(text);
}

std::string firstOf(std::initializer_list<std::string> problems)
{
    for (const std::string& each : problems)
        if (!each.empty())
            return each;
    return {};
}
}

std::string cutOff(std::uint64_t there, std::uint64_t declared)
{
    return "it is cut off at byte " + std::to_string(there) + " of " + std::to_string(declared);
}

bool UnpackingAllowance::take(std::uint64_t bytes)
{
    const bool enough = bytes <= left;
    left -= enough ? bytes : 0;
    return enough;
}

std::string problemOfStore(std::string_view data, const char* id, UnpackingAllowance& allowance)
{
    if (data.size() < store::size)
        return cutOff(data.size(), store::size) + " of its header";
    const std::string there(data.data(), strnlen(data.data(), store::idSize));
    if (there != id)
        return "its id is " + inQuotes(there) + ", not " + inQuotes(id);
    const auto field = [&](size_t offset) -> std::uint64_t { return Core::readLittle32(&data[offset]); };
    const std::uint64_t needed = field(store::headerSize) + field(store::storedSize);
    if (data.size() < needed)
        return cutOff(data.size(), needed);
    if (field(store::version) > store::highestVersion)
        return "its version is " + std::to_string(field(store::version)) + ", and 4096 is the highest known";
    if (!allowance.take(field(store::rawSize)))
        return "it would unpack to " + std::to_string(field(store::rawSize)) + " bytes, which is too much";
    return {};
}

StoredPreset examinePreset(std::string_view data, UnpackingAllowance& allowance)
{
    if (const std::string refused = problemOfStore(data, presetID, allowance); !refused.empty())
        return {"", refused};
    Orbel::CPresetStore unpacked;
    unpacked.setPresetID(presetID);
    std::string copy(data); // reading changes it
    if (unpacked.setPreset(copy.data(), long(copy.size())) != 0)
        return {"", "its header is damaged"};
    copy = {};
    if (unpacked.getChunkCount() == 0)
        return {"", Core::readLittle32(&data[store::compressed]) ? "its data does not unpack"
                                                                 : "its first chunk is damaged"};

    const std::string chunks = problemOfChunks(unpacked, Core::readLittle32(&data[store::rawSize]));
    const auto parameters = chunkOf(unpacked, "PPDATA");
    const auto system = chunkOf(unpacked, "SystemData");
    if (parameters.empty())
        return {"", firstOf({chunks, "it holds no parameters"})};
    if (!allowance.take(unpackedSize(parameters) + unpackedSize(system)))
        return {"", "its parameters would unpack to too much"};
    const ParameterCount count(parameters);
    const std::string ofParameters = count.problem("parameters");
    if (!count.isUsable())
        return {"", ofParameters};
    const size_t size = std::uint64_t(Core::readLittle32(&data[store::headerSize])) +
                        Core::readLittle32(&data[store::storedSize]);
    return {std::string(data.substr(0, size)),
            firstOf({chunks, ofParameters,
                     system.empty() ? "" : ParameterCount(system).problem("system settings"),
                     problemOfTimeBase(unpacked)})};
}

std::string problemOfOlderForm(std::string_view bytes)
{
    for (const TaggedForm& form : taggedForms)
    {
        if (!bytes.starts_with(form.id))
            continue;
        if (bytes.size() < form.first)
            return cutOff(bytes.size(), form.first) + " of its header";
        if (Core::readBig32(&bytes[form.key]) != 0)
            return std::string("its ") + form.parts + " are enciphered, and stay unread";
        const std::uint64_t count = Core::readBig32(&bytes[form.count]);
        const std::uint64_t size = Core::readBig32(&bytes[form.size]);
        if (count > 0 && size < form.leastSize)
            return std::string("its ") + form.parts + " have " + std::to_string(size) +
                   " bytes each, and need " + std::to_string(form.leastSize);
        if (count * size > bytes.size() - form.first)
            return std::string("its ") + form.parts + " are cut off after " +
                   std::to_string((bytes.size() - form.first) / size) + " of " + std::to_string(count);
    }
    return {};
}
}
