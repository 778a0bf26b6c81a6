#include "effect/instance/CQDT_DKS_Single.h"

#include "CORE/Truncate.h"
#include "effect/engine/BeatTrigger.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"
#include "presets/Single_CPresetInterface.h"

#include <algorithm>
#include <cmath>
#include <cstring>

using Orbel::AudioBusInformation;
using Orbel::CHostTimeInfo;
using Orbel::ParameterProperty;

namespace id = DKS_Mini; // the numeric ids of the parameters

constexpr float sampleRateOfClickFilter = 44100.0f;
constexpr float shortestClickFilter = 5.0f; // samples at that rate
constexpr float clickFilterRange = 500.0f;  // samples above the shortest, at that rate
constexpr float firstClickFilter = 200.0f; // samples at that rate, for which the line has room from the start
constexpr float tempoBeforeTheFirst = 10.0f; // beats a minute: the first block finds another tempo
constexpr size_t programNameLength = 28;
constexpr int oldCubaseVersion = 7000; // below it that host can't deal with a second input bus

// What the ducker takes from which parameter.
struct DuckerParameter
{
    CBusSidechainFx::Parameter target;
    int source;
};
constexpr DuckerParameter duckerParameters[] = {
    {CBusSidechainFx::attackTime, id::kAttackTime},     {CBusSidechainFx::attackCurve, id::kAttackCurve},
    {CBusSidechainFx::holdTime, id::kHoldTime},         {CBusSidechainFx::releaseTime, id::kReleaseTime},
    {CBusSidechainFx::releaseCurve, id::kReleaseCurve}, {CBusSidechainFx::strength, id::kStrength}};

// Construction.

CQDT_DKS_Single::CQDT_DKS_Single(Orbel::OrbelCallback* hostCallback) : OrbelOS(hostCallback)
{
    setNumInputBuses(2);
    char product[256] = "";
    if (hostCallback && hostCallback->CB_getHostProductString(product) && std::strstr(product, "Cubase") &&
        hostCallback->CB_getHostVendorVersion() < oldCubaseVersion)
        setNumInputBuses(1);

    presetStore.setPresetID("QDT_DKS_PRESET");
    createProperties();
    delayLine.announceLength(int(firstClickFilter));
    CQDT_DKS_Single::setSampleRate(sampleRateOfClickFilter);
    setPresetName("Init");
    updateTempo(tempoBeforeTheFirst);
    createEditor();

    initPreset();
    resetPending = false;
    CQDT_DKS_Single::reset();

    if (hostCallback)
        takeTempo(hostCallback->CB_getHostTempo());
    timeContext.tempo = tempoBeforeTheFirst;
}

// An editor that is still open reads the parameters, so it goes before them.
CQDT_DKS_Single::~CQDT_DKS_Single()
{
    CQDT_DKS_Single::close_editor();
    editorRef = nullptr;
    editor.reset();
}

void CQDT_DKS_Single::createProperties()
{
    for (const Orbel::ParameterPropertySetup& row : DKS_Mini::ps_plain)
        propertyManager.CreateProperty(&row);
    timeLinker.bind(*propertyManager.getProperty(id::kAttackTime),
                    *propertyManager.getProperty(id::kHoldTime),
                    *propertyManager.getProperty(id::kReleaseTime), *this);
    for (int index = 0; index < propertyManager.getPropertyCount(); ++index)
        propertyManager.getProperty(index)->AddListener(this, true);
    for (int time : {id::kAttackTime, id::kReleaseTime, id::kHoldTime})
        propertyManager.getPropertyByID(time)->setContextRenderer(Orbel::renderBPMRelativeTime, &timeContext);
}

void CQDT_DKS_Single::createEditor()
{
    const EditorFactory factory = getEditorFactory();
    if (!factory)
        return;
    auto made = factory(*this);
    editorRef = made.get();
    editor = std::move(made);
    if (editorRef)
        editorRef->setPropertyManager(&propertyManager);
}

// Parameters and names, as hosts see them.

int CQDT_DKS_Single::getParameterCount()
{
    return int(propertyManager.getAutomateAblePropertyCount());
}

ParameterProperty* CQDT_DKS_Single::getParameterProperty(int index)
{
    return propertyManager.getProperty_automateable(index);
}

ParameterProperty* CQDT_DKS_Single::getParameterProperty_automateable(int index)
{
    return propertyManager.getProperty_automateable(index);
}

ParameterProperty* CQDT_DKS_Single::getParameterPropertyByID(int parameterId)
{
    return propertyManager.getPropertyByID(parameterId);
}

ParameterProperty* CQDT_DKS_Single::getParameterProperty(const char* idText)
{
    return propertyManager.getProperty(idText);
}

bool CQDT_DKS_Single::getProgramName(char* text)
{
    const size_t length = std::min(std::strlen(presetName.get()), programNameLength);
    std::memcpy(text, presetName.get(), length);
    text[length] = 0;
    return true;
}

void CQDT_DKS_Single::setPresetName(const char* name)
{
    if (!name)
        return;
    presetName.set(Orbel::removeFirstDigits(name));
    presetNameProperty.setDataPointer(presetName.get());
    presetNameProperty.setUnitType(Orbel::ParameterUnitType::Text);
    presetNameProperty.notifyListeners();
}

void CQDT_DKS_Single::getEditorSize(Tovra::CRect& rectangle)
{
    if (editorRef)
        editorRef->getEditorSize(rectangle);
}

void CQDT_DKS_Single::open_editor(void* parentWindow)
{
    if (editorRef)
        editorRef->open_sampler_editor(parentWindow);
}

void CQDT_DKS_Single::close_editor()
{
    if (editorRef)
        editorRef->close_sampler_editor();
}

// What a parameter does. The ducker's values, the length of the pre-fade and the trigger's shift are taken
// from the parameters by the audio thread ahead of each block; here is only what cannot wait for it.

static bool isOn(float value)
{
    return value >= 0.5f;
}

void CQDT_DKS_Single::parameterChanged(ParameterProperty* property)
{
    switch (property->getParameterID())
    {
    case id::kAttackTime:
        return timeLinker.written(LinkedTime::attack);
    case id::kHoldTime:
        return timeLinker.written(LinkedTime::hold);
    case id::kBypass:
        return settle(*property, [this](float value) { setBypass(isOn(value)); });
    case id::kLinkTimes:
        return settle(*property, [this](float value) { timeLinker.setLinked(isOn(value)); });
    case id::kClickFilter:
        return delayLine.announceLength(preFadeSamples());
    case id::kBPMScale:
        return settle(*property, [this](float value) { timeContext.bpmScale = isOn(value); });
    case id::kTriggerShift:
        shiftWrites.fetch_add(1);
        return;
    case id::kTimeOffset:
        return settle(*property, [this](float value) { ducker.setTimeOffset(value); });
    default: // trigger sense, envelope hold and the tempo's mirror are not heard
        return;
    }
}

// Stores what follows from a parameter until it fits the value that stands. Of two threads that write the
// same parameter, the earlier one may get here last: the counter puts the two in an order, so that it sees
// the newer value and stores once more.
template <typename Store>
void CQDT_DKS_Single::settle(const ParameterProperty& property, Store store)
{
    float stored;
    do
    {
        stored = property.getCurrentValue();
        settled.fetch_add(1);
        store(stored);
        settled.fetch_add(1);
    } while (property.getCurrentValue() != stored);
}

float CQDT_DKS_Single::valueOf(int parameterId) const
{
    return propertyManager.getProperty(parameterId)->getCurrentValue(); // its index, too
}

// [audio thread] or, while it is stopped, any one.
void CQDT_DKS_Single::applyParameters()
{
    for (const DuckerParameter& each : duckerParameters)
        ducker.setParameter(each.target, valueOf(each.source));
    const int preFade = preFadeSamples();
    ducker.setPreFadeLength(preFade);
    delayLine.setLength(preFade);
    if (const unsigned writes = shiftWrites; writes != appliedShiftWrites)
    {
        appliedShiftWrites = writes;
        triggerShiftSamples =
            shiftSamplesOfParameter(valueOf(id::kTriggerShift), timeContext.tempo, getSampleRate());
    }
}

// The length of the pre-fade and of the delay, which are one.
int CQDT_DKS_Single::preFadeSamples()
{
    const long atItsRate =
        Core::truncate<long>(clickFilterRange * valueOf(id::kClickFilter) + shortestClickFilter);
    return Core::truncate<int>(getSampleRate() / sampleRateOfClickFilter * float(atItsRate));
}

void CQDT_DKS_Single::setTimeAdjust(float beats)
{
    if (!isTimeBase(beats))
        return;
    storeTimeAdjust(beats);
    notifyTimes();
    if (getCallback())
        getCallback()->CB_parameterInfoChanged("");
}

void CQDT_DKS_Single::storeTimeAdjust(float beats)
{
    timeContext.timeAdjust = beats;
    ducker.setTimeAdjust(beats);
}

// The three times have new texts, though not new values.
void CQDT_DKS_Single::notifyTimes()
{
    for (int time : {id::kAttackTime, id::kHoldTime, id::kReleaseTime})
        propertyManager.getPropertyByID(time)->notifyListeners(this);
}

void CQDT_DKS_Single::updateEnvelopeTimes(int changedId)
{
    if (changedId == id::kAttackTime)
        timeLinker.written(LinkedTime::attack);
    else if (changedId == id::kHoldTime)
        timeLinker.written(LinkedTime::hold);
    else
        timeLinker.endReading();
}

// Rates, sizes, states.

void CQDT_DKS_Single::setSampleRate(float rate)
{
    if (!(rate > 0.0f) || !std::isfinite(rate))
        return;
    OrbelOS::setSampleRate(rate);
    if (editorRef)
        editorRef->setSampleRate(rate);
    ducker.setSampleRate(rate);
    const float longest = rate / sampleRateOfClickFilter * (clickFilterRange + shortestClickFilter);
    delayLine.reserve(Core::truncate<int>(longest), getBlockSize());
    delayLine.announceLength(preFadeSamples());
    triggerShiftSamples = shiftSamplesOfTempo(valueOf(id::kTriggerShift), timeContext.tempo, rate);
}

void CQDT_DKS_Single::setBlockSize(long samples)
{
    if (samples <= 0)
        return;
    OrbelOS::setBlockSize(samples);
    reserveBlock(samples);
}

void CQDT_DKS_Single::reserveBlock(long frames)
{
    for (Orbel::AudioStereoBus* bus : {&busPreDuck, &busOutput, &busGainRecord})
        bus->createBusWithOwnBuffer(frames);
    delayLine.reserve(0, frames);
}

void CQDT_DKS_Single::reset()
{
    applyParameters();
    ducker.reset();
    for (Orbel::AudioStereoBus* bus : {&busPreDuck, &busOutput, &busGainRecord})
        bus->clear(0);
    delayLine.clear();
}

// The audio path.

void CQDT_DKS_Single::processAudio(AudioBusInformation& info)
{
    const ScopedCpuMode mode(cpuMode, cpuControl::plainMode);
    if (info.numSamples > busGainRecord.length) // beyond the announced size
        reserveBlock(info.numSamples);

    if (resetPending)
    {
        resetPending = false;
        reset();
    }
    applyParameters();

    const bool bypassed = getBypass();
    if (bypassed)
        passThrough(info);
    else
        duck(info);
    if (editorRef)
        editorRef->updateScopes(false, -1);
    if (editorRef && bypassed)
        editorRef->updateData(info.numSamples);
}

static Orbel::AudioStereoBus* firstBus(Orbel::AudioStereoBus* buses, int count)
{
    return count > 0 && buses[0].left && buses[0].right ? &buses[0] : nullptr;
}

// A bus that the host didn't connect is silence.
static void copyInput(AudioBusInformation& info, Orbel::AudioStereoBus& destination)
{
    if (Orbel::AudioStereoBus* input = firstBus(info.inputs, info.numInputBuses))
        destination.copyFrom(input, info.numSamples);
    else if (info.numSamples > 0)
        destination.clear(info.numSamples);
}

static void copyOutput(AudioBusInformation& info, Orbel::AudioStereoBus& source)
{
    if (Orbel::AudioStereoBus* output = firstBus(info.outputs, info.numOutputBuses))
        output->copyFrom(&source, info.numSamples);
}

void CQDT_DKS_Single::duck(AudioBusInformation& info)
{
    const long frames = info.numSamples;
    if (info.timeInfo.tempo != timeContext.tempo)
        takeTempo(info.timeInfo.tempo);
    armTrigger(info.timeInfo);

    copyInput(info, busPreDuck);
    delayLine.process(busPreDuck, frames);
    busOutput.copyFrom(&busPreDuck, frames);
    ducker.process(busOutput, busGainRecord.left, frames);
    copyOutput(info, busOutput);
}

// Bypassed. The same delay line serves, so that switching neither moves the audio nor loses any of it;
// the countdowns stand.
void CQDT_DKS_Single::passThrough(AudioBusInformation& info)
{
    const long frames = info.numSamples;
    copyInput(info, busOutput);
    delayLine.process(busOutput, frames);
    copyOutput(info, busOutput);
    std::fill_n(busGainRecord.left, std::max(frames, 0L), -1.0f);
    std::fill_n(busGainRecord.right, std::max(frames, 0L), -1.0f);
}

// A tempo that is none is not taken: the last one stays in force.
void CQDT_DKS_Single::takeTempo(float hostTempo)
{
    if (!(hostTempo > 0.0f) || !std::isfinite(hostTempo))
        return;
    updateTempo(hostTempo);
    if (editorRef)
        editorRef->setTempo(hostTempo);
}

void CQDT_DKS_Single::updateTempo(float tempo)
{
    timeContext.tempo = tempo;
    propertyManager.getProperty(id::kTempo)->setValue(tempo);
    triggerShiftSamples = shiftSamplesOfTempo(valueOf(id::kTriggerShift), tempo, getSampleRate());
    notifyTimes();
    ducker.setTempo(tempo);
}

void CQDT_DKS_Single::armTrigger(const CHostTimeInfo& time)
{
    if (!time.playing || !std::isfinite(time.ppqPosition))
        return ducker.forceNoTrigger();
    const BeatTrigger trigger = {getSampleRate(), timeContext.tempo, timeContext.timeAdjust,
                                 triggerShiftSamples};
    const long distance = trigger.samplesToNext(time.ppqPosition);
    if (distance == BeatTrigger::none)
        return;
    ducker.setTriggers(distance);
    ducker.setTriggerVelocity(1.0f);
}
