// What the effect writes into a preset or a host's project, and how it takes it out again.
//
// One chunk serves both: a store with the name, all parameters and the time base. A host's state has the
// system settings besides (those of the user's work rather than of a sound); a preset is read without them.
#include "CORE/Numbers.h"
#include "Orbel/storage/ResourceStore.h"
#include "effect/instance/CQDT_DKS_Single.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"
#include "presets/CPresetConverter_V2.h"
#include "presets/PresetFolder.h"
#include "presets/Single_CPresetInterface.h"
#include "resources/EffectResources.h"

#include <array>
#include <cmath>
#include <cstring>

namespace id = DKS_Mini;

constexpr const char* presetID = "QDT_DKS_PRESET";
constexpr const char* bankID = "QDT_DKS_BANK";
constexpr const char* nameChunk = "SINGLEPRESET"; // kept for older readers; ours takes the store's own name
constexpr const char* parameterChunk = "PPDATA";
constexpr const char* systemChunk = "SystemData";
constexpr const char* timeBaseChunk = "ENV_TIME_ADJUST";
constexpr const char* pluginName = "QDT Brellic Multi"; // what the preferences know the plug-in by
constexpr const char* folderName = "QDT Brellic";
constexpr long smallestChunk = 10;        // bytes; below it nothing is touched
constexpr int deepestConversion = 4;      // of older forms that turn out to hold older forms
constexpr int initPresetHeader = 60;      // bytes of the program file around its chunk
constexpr int numDefaultedProperties = 9; // indices 0 to 8: those of a sound
constexpr std::array systemSet = {id::kTriggerSense, id::kEnvHold, id::kClickFilter, id::kBPMScale,
                                  id::kTriggerShift};
constexpr std::array ignoredInPresets = {id::kTempo,       id::kTriggerSense, id::kEnvHold,
                                         id::kClickFilter, id::kBPMScale,     id::kTriggerShift};

template <typename Ids>
static std::vector<long> listOf(const Ids& ids)
{
    return {ids.begin(), ids.end()};
}

// A store's own copy of what it reads: reading changes the bytes.
static int setCopy(Orbel::CPresetStore& store, const char* data, long size)
{
    std::vector<char> copy(data, data + size);
    return store.setPreset(copy.data(), size);
}

static bool isBank(const char* data, long size)
{
    const size_t length = std::strlen(bankID) + 1; // with its end
    return size_t(size) >= length && std::memcmp(data, bankID, length) == 0;
}

// 1 where the preset tells none, or no length that a note could have.
static float timeBaseOf(const Orbel::CPresetStore& store)
{
    const Sonvex::String text = store.getString(timeBaseChunk);
    const float beats = text.empty() ? 1.0f : float(Core::parseDouble(text.c_str()));
    return isTimeBase(beats) ? beats : 1.0f;
}

static std::optional<std::string> readResource(const char* name)
{
    const Orbel::ResourceBlock block = effectResources();
    return Orbel::readResource(block.data, block.size, name);
}

long CQDT_DKS_Single::getDataChunk(char** out)
{
    presetStore.clear();
    presetStore.setPresetID(presetID);
    presetStore.setPresetName(presetName.get());
    presetStore.addChunk(nameChunk, presetName.get(), long(std::strlen(presetName.get()) + 1));

    char* chunk = nullptr;
    if (const unsigned long size = propertyManager.getChunk(&chunk))
        presetStore.addChunk(parameterChunk, chunk, long(size));
    if (presetType == hostState)
        if (const unsigned long size = getSystemChunk(&chunk))
            presetStore.addChunk(systemChunk, chunk, long(size));
    presetStore.addString(timeBaseChunk, Core::formatFixed(getTimeAdjust(), 8));
    return presetStore.getPreset(out);
}

unsigned long CQDT_DKS_Single::getSystemChunk(char** chunk)
{
    std::vector<Orbel::ParameterProperty*> properties;
    for (int each : systemSet)
        properties.push_back(propertyManager.getPropertyByID(each));
    return propertyManager.getChunkFromList(chunk, properties);
}

void CQDT_DKS_Single::setDataChunk(char* data, long size)
{
    if (data && size >= smallestChunk)
        readChunk(data, size, deepestConversion);
}

// Everything goes to its default before anything is known about the data. Where nothing can be taken, it
// stays there.
void CQDT_DKS_Single::readChunk(const char* data, long size, int depth)
{
    timeLinker.beginReading();
    propertyManager.setAllParamsToDefault();
    if (OLDPRESET::isOldPresetOrBank(data, size))
        return readOlderForm(data, size, depth);
    if (isBank(data, size))
        return loadPresetFromBankChunk(data, size);

    presetStore.clear();
    presetStore.setPresetID(presetID);
    if (setCopy(presetStore, data, size) == 0)
        readPreset();
    else
        timeLinker.endReading();
}

void CQDT_DKS_Single::readOlderForm(const char* data, long size, int depth)
{
    CPresetConverter_V2 converter;
    converter.setDataChunk(data, size);
    char* chunk = nullptr;
    const long chunkSize = converter.getChunkForPreset(converter.getCurrentPresetIndex(), &chunk);
    if (chunk && chunkSize >= smallestChunk && depth > 0)
        readChunk(chunk, chunkSize, depth - 1);
    else
        timeLinker.endReading();
}

// The store's bytes are unpacked; the reading of the state ends here.
void CQDT_DKS_Single::readPreset()
{
    readParameters(presetStore, listOf(ignoredInPresets));
    setPresetName(presetStore.getPresetName());
    if (presetType == hostState)
        readSystemSettings(presetStore);
    storeTimeAdjust(timeBaseOf(presetStore));
    notifyTimes();
    if (getCallback())
        getCallback()->CB_parameterInfoChanged("");
    timeLinker.endReading();
    if (editorRef)
        editorRef->setTimeAdjust(getTimeAdjust());
}

void CQDT_DKS_Single::readParameters(const Orbel::CPresetStore& store, const std::vector<long>& ignored)
{
    char* chunk = nullptr;
    if (const long size = store.getChunk(parameterChunk, &chunk); chunk && size > 0)
        propertyManager.setChunkWithIgnoreList(chunk, size_t(size), ignored);
}

void CQDT_DKS_Single::readSystemSettings(const Orbel::CPresetStore& store)
{
    char* chunk = nullptr;
    if (const long size = store.getChunk(systemChunk, &chunk); chunk && size > 0)
        propertyManager.setChunkWithLoadSuffix(chunk, size_t(size), -1);
}

// The current preset of a bank, with the system settings that it was saved with. The time base isn't read
// and nobody is told of the times; the reading stays open until the next state or updateEnvelopeTimes(-1).
void CQDT_DKS_Single::loadPresetFromBankChunk(const char* data, long size)
{
    Orbel::CPresetStore bank;
    bank.setPresetID(bankID);
    setCopy(bank, data, size);

    const long current = std::strtol(bank.getString("CurrentPreset").c_str(), nullptr, 10);
    char* preset = nullptr;
    long presetSize = 0;
    if (current >= 0)
        presetSize = bank.getChunk(("PRESET" + std::to_string(current)).c_str(), &preset);
    if (preset && presetSize > 0)
    {
        presetStore.clear();
        setCopy(presetStore, preset, presetSize);
        setPresetName(presetStore.getPresetName());
        readParameters(presetStore, {id::kTempo});
    }
    readSystemSettings(bank);
    presetStore.clear();
}

// The sound that the user calls up as "Init". Audio may run: it falls silent at its next block.
void CQDT_DKS_Single::initPreset()
{
    timeLinker.beginReading();
    for (int index = 0; index < numDefaultedProperties; ++index)
        propertyManager.getProperty(index)->setValueToDefault();
    const std::optional<std::string> image = readResource("initPreset");
    if (image && image->size() > initPresetHeader)
        readChunk(image->data() + initPresetHeader, long(image->size()) - initPresetHeader, 0);
    setPresetName("Init");
    resetPending = true;
    timeLinker.endReading();
}

// The library on disk. Nothing of it is touched before somebody asks, so that an instance is made quickly.

const char* CQDT_DKS_Single::getPresetFolder()
{
    if (presetFolder.empty())
    {
        const std::string usual = Orbel::Helpers::getDefaultPresetFolder(folderName);
        presetFolder = Orbel::Helpers::asFolder(
            Orbel::Helpers::getPluginPresetFolder(pluginName, usual.c_str()).c_str());
    }
    return presetFolder.c_str();
}

void CQDT_DKS_Single::setPresetFolder(const char* folder)
{
    if (!folder || !*folder)
        return;
    presetFolder = Orbel::Helpers::asFolder(folder);
    Orbel::Helpers::setPluginPresetFolder(pluginName, presetFolder.c_str());
    if (presetInterface)
        presetInterface->setPresetFolder(presetFolder.c_str());
}

Single_CPresetInterface& CQDT_DKS_Single::getPresetInterface()
{
    if (!presetInterface)
    {
        factoryBank = readResource("defaultBank").value_or("");
        presetInterface = std::make_unique<Single_CPresetInterface>(*this);
        presetInterface->setFactoryBank(factoryBank);
        presetInterface->setPresetFolder(getPresetFolder());
    }
    return *presetInterface;
}

void CQDT_DKS_Single::restoreBank()
{
    getPresetInterface().restoreBank();
}
