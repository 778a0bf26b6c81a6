// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/Wrapper/VST3/Orbel_VST3.h"

#include "CORE/ForeignData.h"
#include "CORE/ThreadCheck.h"
#include "CORE/Truncate.h"
#include "HostSDK/VST3/Text.h"
#include "Orbel/Wrapper/VST3/OrbelVST3Parameter.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3_EditorView.h"
#include "Orbel/contract/BypassParameter.h"
#include "Sonvex/String.h"
#include "pluginterfaces/base/ibstream.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Orbel
{
using namespace Steinberg;
using namespace Steinberg::Vst;

namespace
{
// The largest block: four channels of it take as much memory as foreign data may ask for.
constexpr int32 largestBlock = int32(Core::kLargestForeignSize / (4 * sizeof(float)));
constexpr size_t reservedMidiEvents = 512; // of one block; more are passed on in several lists
}

Orbel_VST3::Orbel_VST3(const OrbelFX_Description& shown)
    : description(shown), effect(createOrbelInstance(this, shown.idAsWord()))
{
    ParameterPropertySetup row;
    row.id = row.longName = row.shortName = "VST3PrgChange";
    row.parameterId = kProgramList;
    row.maximum = float(description.numPrograms);
    programProperty.setup(&row);
}

Orbel_VST3::~Orbel_VST3() = default;

tresult PLUGIN_API Orbel_VST3::queryInterface(const TUID interfaceID, void** object)
{
    const tresult result = SingleComponentEffect::queryInterface(interfaceID, object);
    if (result == kResultOk || !object)
        return result;
    QUERY_INTERFACE(interfaceID, object, IUnitInfo::iid, IUnitInfo)
    QUERY_INTERFACE(interfaceID, object, IProgramListData::iid, IProgramListData)
    QUERY_INTERFACE(interfaceID, object, IMidiMapping::iid, IMidiMapping)
    return result;
}

tresult PLUGIN_API Orbel_VST3::initialize(FUnknown* context)
{
    Core::checkWindowThread("IPluginBase::initialize");
    const tresult result = SingleComponentEffect::initialize(context);
    if (result != kResultOk)
        return result;
    if (!effect)
        effect.reset(createOrbelInstance(this, description.idAsWord()));
    if (!effect)
        return kNotInitialized;

    UnitInfo root{};
    root.id = kRootUnitId;
    root.parentUnitId = kNoParentUnitId;
    root.programListId = kProgramList;
    copyText("Root", root.name);
    units.push_back(root);
    addBuses();
    addParameters();
    effect->setSampleRate(float(getProcessSetup().sampleRate));
    effect->setBlockSize(getProcessSetup().maxSamplesPerBlock);
    silence.resize(size_t(getProcessSetup().maxSamplesPerBlock));
    if (takesMidi())
        pendingMidi.reserve(reservedMidiEvents);
    return kResultOk;
}

void Orbel_VST3::addBuses()
{
    if (description.numStereoInputs > 0)
        addAudioInput("Stereo In", kMain);
    if (description.sidechainFlag)
        addAudioInput("Sidechain", kAux);
    for (int i = 1; i <= description.numStereoOutputs; ++i)
        addAudioOutput(Sonvex::String("%s Stereo Out %i", description.name, i).c_str());
    if (takesMidi())
        addEventInput("Midi In", int32(description.midiChannels));
}

void Orbel_VST3::addParameters()
{
    ParameterProperty* const bypassProperty = findBypassParameter(*effect);
    bypassParameterId = bypassProperty ? ParamID(bypassProperty->getAutomationIndex()) : kOwnBypass;
    for (int i = 0; i < effect->getParameterCount_automateable(); ++i)
    {
        ParameterProperty* const property = effect->getParameterProperty_automateable(i);
        if (!property)
            continue;
        const bool bypasses = property == bypassProperty;
        parameters.addParameter(
            new OrbelVST3Parameter(property, ParamID(i), false, bypasses ? 1 : 0, bypasses));
    }
    if (!bypassProperty)
    {
        constexpr int32 flags = ParameterInfo::kCanAutomate | ParameterInfo::kIsBypass;
        auto* const bypass = new StringListParameter(STR("Bypass"), kOwnBypass, nullptr, flags);
        bypass->appendString(STR("Off"));
        bypass->appendString(STR("On"));
        parameters.addParameter(bypass);
    }
    parameters.addParameter(
        new OrbelVST3Parameter(&programProperty, kProgramList, true, description.numPrograms, false));
    if (takesMidi())
        addControllerParameters();
}

void Orbel_VST3::addControllerParameters()
{
    for (int channel = 0; channel < midiChannels; ++channel)
        for (int controller = 0; controller < controllersPerChannel; ++controller)
        {
            String128 title;
            copyText(Sonvex::String("kMidiCC%i-Channel %i", controller, channel), title);
            const ParamID id = firstController + ParamID(channel * controllersPerChannel + controller);
            parameters.addParameter(new Parameter(title, id, nullptr, 0.0, 0, 0));
        }
}

tresult PLUGIN_API Orbel_VST3::terminate()
{
    Core::checkWindowThread("IPluginBase::terminate");
    for (Orbel_VST3_EditorView* view : views)
        view->forgetEditor();
    units.clear();
    const tresult result = SingleComponentEffect::terminate();
    effect.reset();
    return result;
}

tresult PLUGIN_API Orbel_VST3::setActive(TBool state)
{
    if (!effect)
        return kNotInitialized;
    if (state)
    {
        effect->resume();
        effect->reset();
    }
    else
        effect->suspend();
    return kResultOk;
}

tresult PLUGIN_API Orbel_VST3::setupProcessing(ProcessSetup& setup)
{
    const bool valid = std::isfinite(setup.sampleRate) && setup.sampleRate > 0.0 &&
                       setup.maxSamplesPerBlock >= 0 && setup.maxSamplesPerBlock <= largestBlock;
    const ProcessSetup before = getProcessSetup();
    if (!effect || !valid || SingleComponentEffect::setupProcessing(setup) != kResultOk)
        return kResultFalse;
    if (setup.sampleRate != before.sampleRate)
        effect->setSampleRate(float(setup.sampleRate));
    if (setup.maxSamplesPerBlock != before.maxSamplesPerBlock)
    {
        silence.resize(size_t(setup.maxSamplesPerBlock));
        effect->setBlockSize(setup.maxSamplesPerBlock);
    }
    return kResultOk;
}

static bool readWord(IBStream& stream, int32& word)
{
    int32 count = 0;
    return stream.read(&word, sizeof word, &count) == kResultOk && count == sizeof word;
}

static bool write(IBStream& stream, const void* bytes, int32 size)
{
    int32 count = 0;
    return stream.write(const_cast<void*>(bytes), size, &count) == kResultOk && count == size;
}

tresult PLUGIN_API Orbel_VST3::setState(IBStream* stream)
{
    Core::checkWindowThread("IComponent::setState");
    if (!stream)
        return kResultOk;
    if (!effect)
        return kNotInitialized;
    int32 size = 0, program = 0;
    if (!readWord(*stream, size) || !readWord(*stream, program))
        return kResultFalse;
    effect->setProgram(program);
    if (size <= 0 || std::uint64_t(size) > Core::kLargestForeignSize)
        return kResultOk;
    std::vector<char> chunk(static_cast<size_t>(size));
    int32 count = 0;
    if (stream->read(chunk.data(), size, &count) == kResultOk && count == size)
    {
        effect->setDataChunk(chunk.data(), size);
        effect->finishBankLoad();
    }
    return kResultOk;
}

tresult PLUGIN_API Orbel_VST3::getState(IBStream* stream)
{
    Core::checkWindowThread("IComponent::getState");
    char* chunk = nullptr;
    const long length = stream && effect ? effect->getDataChunk(&chunk) : 0;
    if (length <= 0 || !chunk)
        return kResultFalse;
    const auto size = int32(length);
    const int32 program = effect->getCurrentProgram();
    const bool whole = write(*stream, &size, sizeof size) && write(*stream, &program, sizeof program) &&
                       write(*stream, chunk, size);
    return whole ? kResultOk : kResultFalse;
}

OrbelVST3Parameter* Orbel_VST3::findParameter(ParamID id) const
{
    return dynamic_cast<OrbelVST3Parameter*>(parameters.getParameter(id));
}

ParamValue PLUGIN_API Orbel_VST3::getParamNormalized(ParamID id)
{
    const OrbelVST3Parameter* const parameter = findParameter(id);
    return parameter ? parameter->getNormalized() : SingleComponentEffect::getParamNormalized(id);
}

tresult PLUGIN_API Orbel_VST3::setParamNormalized(ParamID id, ParamValue position)
{
    Core::checkWindowThread("IEditController::setParamNormalized");
    if (id == bypassParameterId || id != kProgramList || !effect)
        return kResultOk;
    SingleComponentEffect::setParamNormalized(id, position);
    effect->setProgram(Core::truncate<int>(programProperty.getCurrentValue()));
    restart(kParamValuesChanged);
    return kResultOk;
}

IPlugView* PLUGIN_API Orbel_VST3::createView(FIDString name)
{
    IEditor* const editor = effect ? effect->getEditor() : nullptr;
    if (!editor || !name || std::strcmp(name, ViewType::kEditor) != 0)
        return nullptr;
    auto* const view = new Orbel_VST3_EditorView(*this, *editor);
    views.push_back(view);
    return view;
}

void Orbel_VST3::forgetView(Orbel_VST3_EditorView* view)
{
    std::erase(views, view);
}

bool Orbel_VST3::isEditorOpen() const
{
    return std::any_of(views.begin(), views.end(), [](const auto* view) { return view->isShown(); });
}
}
