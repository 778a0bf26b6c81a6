// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/Single_CPresetInterface.h"

#include "Orbel/parameters/ParameterText.h"
#include "Orbel/storage/CFileFormat.h"
#include "Sonvex/FileNames.h"
#include "presets/CPresetConverter_V2.h"
#include "presets/IPresetEffect.h"
#include "presets/PresetFolder.h"
#include "presets/PresetNames.h"
#include "presets/PresetWriter.h"
#include "presets/SavedBank.h"

#include <algorithm>

namespace
{
// As long as it lives, the effect saves and loads presets, not states of a project.
class PresetMode
{
public:
    explicit PresetMode(IPresetEffect& of) : effect(of) { effect.setPresetType(1); }
    ~PresetMode() { effect.setPresetType(0); }
    PresetMode(const PresetMode&) = delete;
    PresetMode& operator=(const PresetMode&) = delete;

private:
    IPresetEffect& effect;
};

// Takes the payload out of a file, without the format's header.
Orbel::Diagnosis readPayload(Orbel::CFileFormat& format, const char* path, std::vector<char>& content)
{
    char* buffer = nullptr;
    long size = 0;
    Orbel::Diagnosis found = format.loadFromFile(path, &buffer, size);
    if (buffer)
        content.assign(buffer, buffer + size);
    format.releaseBuffer(buffer);
    return found;
}

void writePresetsOf(const SavedBank& bank, PresetWriter& writer)
{
    const auto count = bank.getDeclaredCount();
    if (!count)
        return writer.note("it does not tell how many presets it holds");
    if (*count < 1)
        writer.note("it holds no preset");
    for (int i = 0; i < std::min<long>(*count, OLDPRESET::kMostPresets); ++i)
        writer.write(i, bank.getPreset(i));
}

void writePresetsOf(CPresetConverter_V2& bank, PresetWriter& writer)
{
    for (int i = 0; i < bank.getNumPresets(); ++i)
    {
        char* data = nullptr;
        const long size = bank.getChunkForPreset(i, &data);
        writer.write(i, {data, size_t(size)});
    }
}
}

Single_CPresetInterface::Single_CPresetInterface(IPresetEffect& owner) : effect(owner)
{
    IPresetInterface::setFileExtension(".dks");
}

void Single_CPresetInterface::setCurrentPresetName(const char* name)
{
    effect.setPresetName(name);
}

bool Single_CPresetInterface::isValidPreset(const char* path) const
{
    return Tovra::compareUpperCase(getFileExt(path), getFileExtension()) == 0;
}

void Single_CPresetInterface::loadPreset(const char* path)
{
    std::vector<char> data;
    if (!readPayload(*Orbel::kPresetFormatFXP, path, data).taken)
        return;
    {
        const PresetMode mode(effect);
        effect.setDataChunk(data.data(), long(data.size()));
    }
    setCurrentToLoaded(path);
}

PresetResult Single_CPresetInterface::saveCurrentPreset(const char* path)
{
    PresetResult result;
    {
        const PresetMode mode(effect);
        char* data = nullptr;
        const long size = effect.getDataChunk(&data);
        result.problem = Orbel::kPresetFormatFXP->saveToFile(path, data, size).problem;
    }
    result.written = result ? 1 : 0;
    rescanPresets();
    return result;
}

PresetResult Single_CPresetInterface::renamePreset(int index, const char* newName)
{
    const std::string oldName = getPresetName(index);
    const size_t digits = size_t(Orbel::removeFirstDigits(oldName.c_str()) - oldName.c_str());
    const bool isEmpty = !newName || !*newName; // which the base refuses
    const std::string name = isEmpty ? "" : oldName.substr(0, digits) + Tovra::sanitizedName(newName);
    return IPresetInterface::renamePreset(index, name.c_str());
}

PresetResult Single_CPresetInterface::importBankFromFile(const char* path)
{
    std::vector<char> data;
    if (const auto found = readPayload(*Orbel::kPresetFormatFXB, path, data); !found.taken)
        return {found.why, 0};
    const std::string library = getPresetFolder();
    if (library.empty())
        return {"there is no folder for presets", 0};
    const std::string folder = library + Tovra::fileNameFor(Tovra::baseNameOf(path), "") + "/";
    return exportBank(folder, {data.data(), data.size()});
}

PresetResult Single_CPresetInterface::exportBankToFolder(const char* folder, const char* data, long size)
{
    if (!data || size <= 0)
        return {"it is empty", 0};
    return exportBank(Orbel::Helpers::asFolder(folder), {data, size_t(size)});
}

PresetResult Single_CPresetInterface::restoreBank()
{
    if (factoryBank.size() <= Orbel::CPresetFormatFXB::kHeaderSize)
        return {"there are no factory presets", 0};
    return exportBank(getPresetFolder(), factoryBank.substr(Orbel::CPresetFormatFXB::kHeaderSize));
}

PresetResult Single_CPresetInterface::exportBank(const std::string& folder, std::string_view data)
{
    if (folder.empty())
        return {"there is no folder for presets", 0};
    PresetWriter writer(folder, getFileExtension());
    if (OLDPRESET::isOldPresetOrBank(data.data(), long(data.size())))
    {
        CPresetConverter_V2 bank;
        writer.note(bank.convert(data.data(), long(data.size())).why);
        writePresetsOf(bank, writer);
        return writer.finish();
    }
    SavedBank bank;
    writer.note(bank.read(data).why);
    writePresetsOf(bank, writer);
    return writer.finish();
}
