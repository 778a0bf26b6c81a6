#include "tools/preset/PresetFile.h"

#include "CORE/ForeignData.h"
#include "Orbel/storage/CPresetStore.h"
#include "presets/AProgram.h"
#include "presets/CPresetConverter_V2.h"
#include "tools/common/InputFile.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace lodex
{
namespace
{
// A payload behind a header of another's, and what is missing of it.
struct Payload
{
    std::string bytes;
    PresetType type = PresetType::state;
    std::string problem;
};

// The two kinds of files. Their integers are big-endian.
struct FileHeader
{
    std::string_view magic;
    size_t payloadSize; // offset
    size_t size;
};

constexpr FileHeader fileHeaders[] = {{"FPCh", 56, 60}, {"FBCh", 156, 160}};
constexpr size_t magicOffset = 8;
constexpr size_t idOffset = 16;
constexpr std::string_view pluginID = "QDKC";
constexpr size_t streamHeader = 8; // of a VST 3 state: size and program, little-endian

// The id with its end.
bool beginsWith(std::string_view bytes, std::string_view id)
{
    return bytes.size() > id.size() && bytes.starts_with(id) && bytes[id.size()] == 0;
}

bool isOlderForm(std::string_view bytes)
{
    return OLDPRESET::isOldPresetOrBank(bytes.data(), long(bytes.size()));
}

bool isOlderBank(std::string_view bytes)
{
    const auto size = long(bytes.size());
    return OLDPRESET::isRawForm(size) ? size != OLDPRESET::kSingleProgramSize
                                      : OLDPRESET::isOldBank(bytes.data(), size);
}

bool hasKnownID(std::string_view bytes)
{
    return beginsWith(bytes, presetID) || beginsWith(bytes, bankID) ||
           OLDPRESET::isOldPreset(bytes.data(), long(bytes.size())) ||
           OLDPRESET::isOldBank(bytes.data(), long(bytes.size()));
}

bool isStream(const std::string& bytes)
{
    if (bytes.size() <= streamHeader)
        return false;
    return Core::readLittle32(bytes.data()) == bytes.size() - streamHeader ||
           hasKnownID(std::string_view(bytes).substr(streamHeader));
}

const FileHeader& findFileHeader(std::string_view bytes)
{
    const std::string_view magic = bytes.substr(std::min(bytes.size(), magicOffset), 4);
    for (const FileHeader& each : fileHeaders)
        if (magic == each.magic)
            return each;
    if (magic.size() < 4)
        throw ToolError(cutOff(bytes.size(), fileHeaders[0].size) + " of its header");
    throw ToolError("it is a file of kind " + inQuotes(magic) + ", not \"FPCh\" or \"FBCh\"");
}

Payload payloadOfFile(std::string bytes)
{
    const FileHeader& header = findFileHeader(bytes);
    if (bytes.size() < header.size)
        throw ToolError(cutOff(bytes.size(), header.size) + " of its header");
    if (const auto id = std::string_view(bytes).substr(idOffset, 4); id != pluginID)
        throw ToolError("it is of another plug-in: its id is " + inQuotes(id) + ", not " +
                        inQuotes(pluginID));

    Payload payload{"", PresetType::preset, ""};
    const std::uint64_t declared = Core::readBig32(&bytes[header.payloadSize]);
    if (declared > bytes.size() - header.size)
        payload.problem = cutOff(bytes.size(), header.size + declared);
    bytes.erase(0, header.size);
    bytes.resize(std::min<std::uint64_t>(declared, bytes.size()));
    payload.bytes = std::move(bytes);
    return payload;
}

// A host takes such a state as a whole or not at all.
Payload payloadOfStream(std::string bytes)
{
    const std::uint64_t declared = Core::readLittle32(bytes.data());
    if (declared > bytes.size() - streamHeader)
        throw ToolError(cutOff(bytes.size(), streamHeader + declared));
    bytes.erase(0, streamHeader);
    bytes.resize(declared);
    return {std::move(bytes), PresetType::state, ""};
}

Payload unwrap(std::string bytes)
{
    if (bytes.empty())
        throw ToolError("it is empty");
    if (OLDPRESET::isRawForm(long(bytes.size())))
        return {std::move(bytes), PresetType::state, ""};
    if (bytes.starts_with("CcnK"))
        return payloadOfFile(std::move(bytes));
    if (isStream(bytes))
        return payloadOfStream(std::move(bytes));
    return {std::move(bytes), PresetType::state, ""};
}

void readOlderForm(PresetFile& file, std::string bytes)
{
    file.isOlder = true;
    file.isBank = isOlderBank(bytes);
    file.problem = problemOfOlderForm(bytes);
    CPresetConverter_V2 converter;
    converter.setDataChunk(bytes.data(), long(bytes.size()));
    const int count = converter.getNumPresets();
    for (int i = 0; i < std::min(count, mostPresets); ++i)
    {
        char* chunk = nullptr;
        const long size = converter.getChunkForPreset(i, &chunk);
        UnpackingAllowance allowance; // these are our own, and small
        file.presets.push_back(examinePreset({chunk, size_t(size)}, allowance));
    }
    file.current = converter.getCurrentPresetIndex();
}

// The chunk of preset number i; its data is null if there is none.
std::string_view presetOfBank(const Orbel::CPresetStore& bank, int i)
{
    char* bytes = nullptr;
    const long size = bank.getChunk(("PRESET" + std::to_string(i)).c_str(), &bytes);
    return {bytes, size_t(size)};
}

StoredPreset examinePresetOfBank(std::string_view chunk, UnpackingAllowance& allowance)
{
    if (!chunk.data())
        return {"", "it is missing"};
    if (isOlderForm(chunk))
        return {"", "it is of an older form, which a bank cannot hold"};
    return examinePreset(chunk, allowance);
}

void readPresetsOfBank(PresetFile& file, const Orbel::CPresetStore& bank)
{
    const Sonvex::String declared = bank.getString("NumPresets");
    if (declared.empty())
        file.problem = "it does not tell how many presets it holds";
    const long count = declared.empty() ? mostPresets : std::strtol(declared.c_str(), nullptr, 10);

    UnpackingAllowance allowance;
    int end = 0; // behind the last that is there
    for (int i = 0; i < std::min<long>(count, mostPresets); ++i)
        if (presetOfBank(bank, i).data())
            end = i + 1;
    for (int i = 0; i < end; ++i)
        file.presets.push_back(examinePresetOfBank(presetOfBank(bank, i), allowance));
    if (file.problem.empty() && end < count)
        file.problem = "it holds " + std::to_string(end) + " of " + std::to_string(count) + " presets";
}

void readBank(PresetFile& file, std::string bytes)
{
    UnpackingAllowance allowance;
    if (const std::string refused = problemOfStore(bytes, bankID, allowance); !refused.empty())
        throw ToolError(refused);
    Orbel::CPresetStore bank;
    bank.setPresetID(bankID);
    if (bank.setPreset(bytes.data(), long(bytes.size())) != 0 || bank.getChunkCount() == 0)
        throw ToolError("its data does not unpack");
    bytes = {};

    file.isBank = true;
    const long current = std::strtol(bank.getString("CurrentPreset").c_str(), nullptr, 10);
    file.current = int(std::clamp<long>(current, INT_MIN, INT_MAX));
    char* settings = nullptr;
    const long size = bank.getChunk("SystemData", &settings);
    file.systemSettings.assign(settings ? settings : "", size_t(size));
    readPresetsOfBank(file, bank);
}

void readPayload(PresetFile& file, std::string bytes)
{
    if (isOlderForm(bytes))
        return readOlderForm(file, std::move(bytes));
    if (beginsWith(bytes, bankID))
        return readBank(file, std::move(bytes));
    if (!beginsWith(bytes, presetID))
        throw ToolError("it is in none of the forms that a preset can have");
    UnpackingAllowance allowance;
    file.presets.push_back(examinePreset(bytes, allowance));
}

std::string problemOfPresets(const PresetFile& file)
{
    for (size_t i = 0; i < file.presets.size(); ++i)
        if (const std::string& problem = file.presets[i].problem; !problem.empty())
            return (file.isBank ? "preset " + std::to_string(i) + ": " : "") + problem;
    return {};
}

void requireSomethingUsable(const PresetFile& file)
{
    for (const StoredPreset& preset : file.presets)
        if (!preset.chunk.empty())
            return;
    for (const std::string& reason : {problemOfPresets(file), file.problem})
        if (!reason.empty())
            throw ToolError(reason);
    throw ToolError("it holds no preset");
}
}

std::vector<std::string> PresetFile::chunks(size_t index, PresetType taken) const
{
    std::vector<std::string> result{presets[index].chunk};
    if (!isBank || isOlder || taken != PresetType::state)
        return result;
    Orbel::CPresetStore bank;
    bank.setPresetID(bankID);
    bank.addString("CurrentPreset", "0");
    bank.addChunk("PRESET0", result[0].data(), long(result[0].size()));
    bank.addChunk("SystemData", systemSettings.data(), long(systemSettings.size()));
    char* bytes = nullptr;
    const long size = bank.getPreset(&bytes);
    result.emplace_back(bytes, size_t(size));
    return result;
}

PresetFile parsePresetFile(std::string bytes)
{
    Payload payload = unwrap(std::move(bytes));
    PresetFile file;
    file.type = payload.type;
    try
    {
        readPayload(file, std::move(payload.bytes));
        requireSomethingUsable(file);
    }
    catch (const ToolError&)
    {
        if (payload.problem.empty())
            throw;
        throw ToolError(payload.problem);
    }
    if (!payload.problem.empty())
        file.problem = payload.problem;
    if (file.problem.empty())
        file.problem = problemOfPresets(file);
    return file;
}

PresetFile readPresetFile(const std::string& path)
{
    try
    {
        return parsePresetFile(readInputFile(path));
    }
    catch (const ToolError& reason)
    {
        throw cannotRead(path, reason);
    }
}
}
