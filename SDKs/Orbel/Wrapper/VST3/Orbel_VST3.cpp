#include "Orbel/Wrapper/VST3/Orbel_VST3.h"

#include "CORE/ForeignData.h"
#include "CORE/Truncate.h"
#include "HostSDK/VST3/Text.h"
#include "Orbel/Wrapper/VST3/OrbelVST3Parameter.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3_EditorView.h"
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
// Of a block: four channels of it fill what foreign data may take at most.
constexpr int32 mostFrames = int32(Core::kLargestForeignSize / (4 * sizeof(float)));
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
    bypassParameterId = kOwnBypass;
    for (int i = 0; i < effect->getParameterCount_automateable(); ++i)
    {
        ParameterProperty* const property = effect->getParameterProperty_automateable(i);
        if (!property)
            continue;
        Sonvex::String id = property->getID();
        id.toUpper();
        const bool bypasses = bypassParameterId == kOwnBypass && (id == "BYPASS" || id == "KBYPASS");
        if (bypasses)
            bypassParameterId = ParamID(property->getAutomationIndex());
        parameters.addParameter(
            new OrbelVST3Parameter(property, ParamID(i), false, bypasses ? 1 : 0, bypasses));
    }
    if (bypassParameterId == kOwnBypass)
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
    const bool sound = std::isfinite(setup.sampleRate) && setup.sampleRate > 0.0 &&
                       setup.maxSamplesPerBlock >= 0 && setup.maxSamplesPerBlock <= mostFrames;
    const ProcessSetup before = getProcessSetup();
    if (!effect || !sound || SingleComponentEffect::setupProcessing(setup) != kResultOk)
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
        effect->setDataChunk(chunk.data(), size);
    return kResultOk;
}

tresult PLUGIN_API Orbel_VST3::getState(IBStream* stream)
{
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

OrbelVST3Parameter* Orbel_VST3::parameterAt(int index) const
{
    const bool there = index >= 0 && index < parameters.getParameterCount();
    return there ? dynamic_cast<OrbelVST3Parameter*>(parameters.getParameterByIndex(index)) : nullptr;
}

ParamValue PLUGIN_API Orbel_VST3::getParamNormalized(ParamID id)
{
    const OrbelVST3Parameter* const parameter = findParameter(id);
    return parameter ? parameter->getNormalized() : SingleComponentEffect::getParamNormalized(id);
}

tresult PLUGIN_API Orbel_VST3::setParamNormalized(ParamID id, ParamValue position)
{
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
    views.erase(std::remove(views.begin(), views.end(), view), views.end());
}

bool Orbel_VST3::restart(int32 flags)
{
    return componentHandler && componentHandler->restartComponent(flags) == kResultOk;
}

bool Orbel_VST3::CB_updateHostDisplay()
{
    const FUnknownPtr<IUnitHandler> unitHandler(componentHandler);
    if (!unitHandler)
        return false;
    unitHandler->notifyUnitSelection(kRootUnitId);
    unitHandler->notifyProgramListChange(kProgramList, kAllProgramInvalid);
    return true;
}

bool Orbel_VST3::CB_ioChanged()
{
    return restart(kIoChanged | kLatencyChanged | kParamTitlesChanged);
}

bool Orbel_VST3::CB_setOutputLatency(int samples)
{
    latencySamples = samples;
    return true;
}

bool Orbel_VST3::CB_beginEdit(int index)
{
    OrbelVST3Parameter* const parameter = parameterAt(index);
    if (parameter)
        parameter->editing = true;
    return beginEdit(ParamID(index)) == kResultOk;
}

bool Orbel_VST3::CB_endEdit(int index)
{
    OrbelVST3Parameter* const parameter = parameterAt(index);
    if (parameter)
        parameter->editing = false;
    return endEdit(ParamID(index)) == kResultOk;
}

void Orbel_VST3::CB_performEdit(int index, float position)
{
    performEdit(ParamID(index), position);
}

void Orbel_VST3::CB_parameterInfoChanged(const char*)
{
    restart(kParamValuesChanged | kParamTitlesChanged);
}
}
