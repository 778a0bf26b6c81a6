// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/preset/PresetPayload.h"

#include "CORE/ForeignData.h"
#include "Orbel/storage/CFileFormat.h"
#include "Orbel/storage/CPresetStore.h"
#include "presets/AProgram.h"
#include "presets/OLDPRESET.h"
#include "presets/StateLayout.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

#include <algorithm>
#include <optional>

namespace lodex
{
namespace
{
constexpr std::string_view fileMagic = "CcnK";
constexpr size_t kindOffset = 8;
constexpr size_t streamHeader = 8; // of a VST 3 state: size and program, little-endian

bool hasKnownID(std::string_view bytes)
{
    const auto size = long(bytes.size());
    return StateLayout::beginsWithID(bytes, StateLayout::presetID) ||
           StateLayout::beginsWithID(bytes, StateLayout::bankID) ||
           OLDPRESET::isOldPreset(bytes.data(), size) || OLDPRESET::isOldBank(bytes.data(), size);
}

PresetPayload payloadOfFile(Orbel::CPresetFormat& format, std::string_view bytes)
{
    std::string_view payload;
    const Orbel::Diagnosis found = format.unwrap(bytes, payload);
    if (!found.taken)
        throw ToolError(printable(found.why));
    return {std::string(payload), PresetType::preset, printable(found.why)};
}

// The payload if the bytes begin as a program or bank file does.
std::optional<PresetPayload> unwrapFile(std::string_view bytes)
{
    Orbel::CPresetFormatFXP program;
    Orbel::CPresetFormatFXB bank;
    for (Orbel::CPresetFormat* format :
         {static_cast<Orbel::CPresetFormat*>(&program), static_cast<Orbel::CPresetFormat*>(&bank)})
    {
        format->setPluginID(StateLayout::pluginID);
        if (format->isKind(bytes))
            return payloadOfFile(*format, bytes);
    }
    return {};
}

[[noreturn]] void refuseFile(std::string_view bytes)
{
    const std::string_view kind = bytes.substr(std::min(bytes.size(), kindOffset), fileMagic.size());
    if (kind.size() < fileMagic.size())
        throw ToolError(Orbel::cutOff(bytes.size(), Orbel::CPresetFormatFXP::kHeaderSize) + " of its header");
    throw ToolError("it is a file of kind " + inQuotes(kind) + ", not \"FPCh\" or \"FBCh\"");
}

bool declaresItsSize(std::string_view stream)
{
    return stream.size() > streamHeader && Core::readLittle32(stream.data()) == stream.size() - streamHeader;
}

bool holdsKnownID(std::string_view stream)
{
    return stream.size() > streamHeader && hasKnownID(stream.substr(streamHeader));
}

// A host takes such a state as a whole or not at all.
PresetPayload payloadOfStream(std::string_view bytes)
{
    const std::uint64_t declared = Core::readLittle32(bytes.data());
    const std::string_view rest = bytes.substr(streamHeader);
    if (declared > rest.size())
        throw ToolError(Orbel::cutOff(bytes.size(), streamHeader + declared));
    return {std::string(rest.substr(0, declared)), PresetType::state, ""};
}

// Whether the bytes are a preset or a bank of today that unpacks.
bool isWholeStore(std::string_view bytes)
{
    for (const char* id : {StateLayout::presetID, StateLayout::bankID})
    {
        Orbel::CPresetStore store;
        store.setPresetID(id);
        std::string copy(bytes);
        if (store.setPreset(copy.data(), long(copy.size())) == 0 && store.getChunkCount() > 0)
            return true;
    }
    return false;
}
}

PresetPayload unwrapPreset(std::string bytes)
{
    if (bytes.empty())
        throw ToolError("it is empty");
    if (auto payload = unwrapFile(bytes))
        return std::move(*payload);
    const bool hasRawSize = OLDPRESET::isRawForm(long(bytes.size()));
    if (hasRawSize && isWholeStore(bytes))
        return {bytes + '\0', PresetType::state,
                ""}; // one byte more, since its size would count for the effect
    if (hasRawSize && !(declaresItsSize(bytes) && holdsKnownID(bytes)))
        return {std::move(bytes), PresetType::state, ""};
    if (bytes.starts_with(fileMagic))
        refuseFile(bytes);
    if (declaresItsSize(bytes) || holdsKnownID(bytes))
        return payloadOfStream(bytes);
    return {std::move(bytes), PresetType::state, ""};
}
}
