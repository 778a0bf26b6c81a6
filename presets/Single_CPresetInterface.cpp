#include "presets/Single_CPresetInterface.h"

#include "CORE/File.h"
#include "CORE/ForeignData.h"
#include "Orbel/parameters/ParameterText.h"
#include "Orbel/storage/CFileFormat.h"
#include "Orbel/storage/CPresetStore.h"
#include "Sonvex/FileNames.h"
#include "presets/CPresetConverter_V2.h"
#include "presets/IPresetEffect.h"
#include "presets/PresetFolder.h"
#include "presets/PresetNames.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace
{
constexpr const char* presetID = "QDT_DKS_PRESET";
constexpr const char* bankID = "QDT_DKS_BANK";
constexpr size_t bankFileHeader = 160; // bytes of a bank's file ahead of the bank
constexpr size_t rawSizeInStore = 40;  // where a store tells the bytes that it unpacks to

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

// What a store may unpack to.
std::uint64_t unpackedSizeOf(std::span<const char> store)
{
    return store.size() < rawSizeInStore + 4 ? 0 : Core::readLittle32(store.data() + rawSizeInStore);
}

// What is in a file behind the format's header; empty if there is none.
std::vector<char> contentOf(Orbel::CFileFormat& format, const char* path)
{
    char* buffer = nullptr;
    long size = 0;
    format.loadFromFile(path, &buffer, size);
    std::vector<char> content;
    if (buffer)
        content.assign(buffer, buffer + size);
    format.releaseBuffer(buffer);
    return content;
}

// Writes the presets of one bank into a folder.
class PresetWriter
{
public:
    PresetWriter(const std::string& to, const char* itsExtension) : folder(to), extension(itsExtension) {}

    // A preset as it stands, with its place in the bank, from 0, in the file's name. Nothing if it is none.
    void write(int index, std::span<const char> stored)
    {
        const auto name = nameOf(stored);
        if (!name)
            return;
        const Sonvex::String number("%02i-", index + 1);
        const std::string file = folder + Tovra::fileNameFor(number + Tovra::bearableName(*name), extension);
        Orbel::kPresetFormatFXP->saveToFile(file.c_str(), stored.data(), long(stored.size()));
    }

private:
    std::optional<std::string> nameOf(std::span<const char> stored)
    {
        const std::uint64_t size = unpackedSizeOf(stored);
        if (size > room || OLDPRESET::isOldPresetOrBank(stored.data(), long(stored.size())))
            return {};
        room -= size;
        Orbel::CPresetStore preset;
        preset.setPresetID(presetID);
        std::vector<char> copy(stored.begin(), stored.end()); // reading changes it
        if (preset.setPreset(copy.data(), long(copy.size())) != 0)
            return {};
        return preset.getPresetName();
    }

    std::string folder, extension;
    std::uint64_t room = Core::kLargestForeignSize; // that all of them together may unpack to
};

int writePresetsOf(const Orbel::CPresetStore& bank, PresetWriter& writer)
{
    char* data = nullptr;
    bank.getChunk("NumPresets", &data);
    if (!data)
        return 0;
    const long count = std::strtol(bank.getString("NumPresets").c_str(), nullptr, 10);
    for (int i = 0; i < std::min<long>(count, OLDPRESET::kMostPresets); ++i)
    {
        const long size = bank.getChunk(("PRESET" + std::to_string(i)).c_str(), &data);
        writer.write(i, {data, size_t(size)});
    }
    return 1;
}

int writePresetsOf(CPresetConverter_V2& bank, PresetWriter& writer)
{
    for (int i = 0; i < bank.getNumPresets(); ++i)
    {
        char* data = nullptr;
        const long size = bank.getChunkForPreset(i, &data);
        writer.write(i, {data, size_t(size)});
    }
    return 1;
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
    Sonvex::String extension = getFileExt(path);
    extension.toLower();
    return extension == getFileExtension();
}

void Single_CPresetInterface::loadPreset(const char* path)
{
    std::vector<char> data = contentOf(*Orbel::kPresetFormatFXP, path);
    if (data.empty())
        return;
    const PresetMode mode(effect);
    effect.setDataChunk(data.data(), long(data.size()));
}

void Single_CPresetInterface::saveCurrentPreset(const char* path)
{
    {
        const PresetMode mode(effect);
        char* data = nullptr;
        const long size = effect.getDataChunk(&data);
        if (data)
            Orbel::kPresetFormatFXP->saveToFile(path, data, size);
    }
    rescanPresets();
}

void Single_CPresetInterface::renamePreset(int index, const char* newName)
{
    if (!newName || !*newName)
        return;
    const std::string oldName = getPresetName(index);
    const size_t digits = size_t(Orbel::removeFirstDigits(oldName.c_str()) - oldName.c_str());
    const std::string name = oldName.substr(0, digits) + Tovra::bearableName(newName);
    IPresetInterface::renamePreset(index, name.c_str());
}

int Single_CPresetInterface::importBankFromFile(const char* path)
{
    const std::string library = getPresetFolder();
    std::vector<char> data = contentOf(*Orbel::kPresetFormatFXB, path);
    if (data.empty() || library.empty())
        return 0;
    exportBank(library + Tovra::fileNameFor(Tovra::baseNameOf(path), "") + "/", std::move(data));
    return 1;
}

int Single_CPresetInterface::exportBankToFolder(const char* folder, const char* data, long size)
{
    if (!data || size <= 0)
        return 0;
    return exportBank(Orbel::Helpers::asFolder(folder), {data, data + size});
}

void Single_CPresetInterface::restoreBank()
{
    if (factoryBank.size() <= bankFileHeader)
        return;
    const auto bank = factoryBank.subspan(bankFileHeader);
    exportBank(getPresetFolder(), {bank.begin(), bank.end()});
}

int Single_CPresetInterface::exportBank(const std::string& folder, std::vector<char> data)
{
    if (folder.empty())
        return 0;
    Core::File::mkDirRecursive(folder.c_str());
    PresetWriter writer(folder, getFileExtension());
    if (OLDPRESET::isOldPresetOrBank(data.data(), long(data.size())))
    {
        CPresetConverter_V2 bank;
        bank.setDataChunk(data.data(), long(data.size()));
        return writePresetsOf(bank, writer);
    }
    Orbel::CPresetStore bank;
    bank.setPresetID(bankID);
    bank.setPreset(data.data(), long(data.size()));
    data = {}; // it may be large, and the store has a copy
    return writePresetsOf(bank, writer);
}
