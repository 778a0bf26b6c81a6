// SPDX-License-Identifier: GPL-3.0-or-later
// What the effect writes into a preset or a host's project, and how it takes it out again.
//
// One chunk serves both: a store with the name, all parameters and the time base. A host's state has the
// system settings besides (those of the user's work rather than of a sound); a preset is read without them.
#include "Orbel/storage/CFileFormat.h"
#include "Orbel/storage/ResourceStore.h"
#include "effect/instance/CQDT_DKS_Single.h"
#include "presets/CPresetConverter_V2.h"
#include "presets/PresetFolder.h"
#include "presets/SavedBank.h"
#include "presets/SavedState.h"
#include "presets/Single_CPresetInterface.h"
#include "presets/StateLayout.h"
#include "resources/EffectResources.h"

constexpr const char* pluginName = "QDT Brellic Multi"; // the name of its preferences
constexpr const char* folderName = "QDT Brellic";
constexpr long smallestChunk = 10;        // bytes; below it nothing is touched
constexpr int deepestConversion = 4;      // of older forms that turn out to hold older forms
constexpr int numDefaultedProperties = 9; // indices 0 to 8: those of a sound

static std::optional<std::string> readResource(const char* name)
{
    const Orbel::ResourceBlock block = effectResources();
    return Orbel::readResource(block.data, block.size, name);
}

long CQDT_DKS_Single::getDataChunk(char** out)
{
    SavedState state;
    state.name = presetName.get();
    state.parameters = propertyManager.getRecords();
    if (presetType == hostState)
    {
        std::vector<Orbel::ParameterProperty*> properties;
        properties.reserve(std::size(StateLayout::systemSet));
        for (int each : StateLayout::systemSet)
            properties.push_back(propertyManager.getPropertyByID(each));
        state.systemSettings = Orbel::CPropertyManager::getRecords(properties);
    }
    state.timeBase = getTimeAdjust();
    return state.write(presetStore, out);
}

void CQDT_DKS_Single::setDataChunk(char* data, long size)
{
    if (!data || size < smallestChunk)
        return;
    if (presetInterface)
        presetInterface->resetIndex(); // the library sets it again if this comes from one of its files
    readChunk(data, size, deepestConversion);
}

// Everything is set to its default before the data is looked at. If none of it can be taken, the defaults
// stay.
void CQDT_DKS_Single::readChunk(const char* data, long size, int depth)
{
    timeBaseOfBank.reset();
    timeLinker.beginReading();
    propertyManager.setAllParamsToDefault();
    if (OLDPRESET::isOldPresetOrBank(data, size))
        return readOlderForm(data, size, depth);
    if (StateLayout::beginsWithID({data, size_t(size)}, StateLayout::bankID))
        return loadPresetFromBankChunk(data, size);

    SavedState state;
    if (state.read(presetStore, {data, size_t(size)}).taken)
        readPreset(state);
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

// The reading of the state ends here.
void CQDT_DKS_Single::readPreset(const SavedState& state)
{
    propertyManager.setRecords(state.parameters, StateLayout::noPartOfASound);
    setPresetName(state.name.c_str());
    if (presetType == hostState)
        propertyManager.setRecords(state.systemSettings, {});
    storeTimeAdjust(state.timeBase);
    notifyTimes();
    if (getCallback())
        getCallback()->CB_parameterInfoChanged("");
    timeLinker.endReading();
    if (editorRef)
        editorRef->setTimeAdjust(getTimeAdjust());
}

// The current preset of a bank, with the system settings that it was saved with. The time base isn't read
// and nobody is told of the times; the reading stays open until the next state or updateEnvelopeTimes(-1).
void CQDT_DKS_Single::loadPresetFromBankChunk(const char* data, long size)
{
    timeBaseOfBank.reset();
    SavedBank bank;
    bank.read({data, size_t(size)});
    const std::string_view preset = bank.getPreset(bank.getCurrent());
    if (!preset.empty())
    {
        SavedState state;
        state.read(presetStore, preset);
        setPresetName(state.name.c_str());
        propertyManager.setRecords(state.parameters, StateLayout::ignoredInBanks);
        if (!presetStore.getString(StateLayout::timeBaseChunk).empty())
            timeBaseOfBank = state.timeBase;
    }
    Orbel::ParameterChunk systemSettings;
    systemSettings.read(bank.getSystemSettings());
    propertyManager.setRecords(systemSettings, {});
    presetStore.clear();
}

void CQDT_DKS_Single::finishBankLoad()
{
    timeLinker.endReading();
    if (!timeBaseOfBank)
        return;
    setTimeAdjust(*timeBaseOfBank);
    timeBaseOfBank.reset();
    if (editorRef)
        editorRef->setTimeAdjust(getTimeAdjust());
}

// The sound that the user calls up as "Init". Audio may run: it falls silent at its next block.
void CQDT_DKS_Single::initPreset()
{
    timeLinker.beginReading();
    for (int index = 0; index < numDefaultedProperties; ++index)
        propertyManager.getProperty(index)->setValueToDefault();
    const std::optional<std::string> image = readResource("initPreset");
    constexpr size_t header = Orbel::CPresetFormatFXP::kHeaderSize;
    if (image && image->size() > header)
        readChunk(image->data() + header, long(image->size() - header), 0);
    setPresetName("Init");
    if (presetInterface)
        presetInterface->resetIndex();
    resetPending = true;
    timeLinker.endReading();
}

// The library on disk. It is not touched before somebody asks for it, so that an instance is made quickly.

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
