#include "effect/instance/CQDT_DKS_Single.h"

#include "CORE/Truncate.h"
#include "DSP/VectorPrimitives.h"
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
constexpr float shortestClickFilter = 5.0f;  // samples at that rate
constexpr float clickFilterRange = 500.0f;   // samples above the shortest, at that rate
constexpr float tempoBeforeTheFirst = 10.0f; // beats a minute: the first block finds another tempo
constexpr size_t programNameLength = 28;
constexpr int oldCubaseVersion = 7000; // below it that host can't deal with a second input bus

// Construction.

CQDT_DKS_Single::CQDT_DKS_Single(Orbel::OrbelCallback* hostCallback) : OrbelOS(hostCallback)
{
    setNumInputBuses(2);
    char product[256] = "";
    if (hostCallback && hostCallback->CB_getHostProductString(product) && std::strstr(product, "Cubase") &&
        hostCallback->CB_getHostVendorVersion() < oldCubaseVersion)
        setNumInputBuses(1);

    presetStore.setPresetID("QDT_DKS_PRESET");
    CQDT_DKS_Single::setSampleRate(sampleRateOfClickFilter);
    createProperties();
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

CQDT_DKS_Single::~CQDT_DKS_Single() = default;

void CQDT_DKS_Single::createProperties()
{
    for (const Orbel::ParameterPropertySetup& row : DKS_Mini::ps_plain)
        propertyManager.CreateProperty(&row)->AddListener(this, true);
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

// What a parameter does.

void CQDT_DKS_Single::parameterChanged(ParameterProperty* property)
{
    const float value = property->getCurrentValue();
    switch (property->getParameterID())
    {
    case id::kAttackTime:
        return storeDuckerValue(CBusSidechainFx::attackTime, *property);
    case id::kReleaseTime:
        return storeDuckerValue(CBusSidechainFx::releaseTime, *property);
    case id::kHoldTime:
        return storeDuckerValue(CBusSidechainFx::holdTime, *property);
    case id::kAttackCurve:
        return storeDuckerValue(CBusSidechainFx::attackCurve, *property);
    case id::kReleaseCurve:
        return storeDuckerValue(CBusSidechainFx::releaseCurve, *property);
    case id::kStrength:
        return storeDuckerValue(CBusSidechainFx::strength, *property);
    case id::kBypass:
        return setBypass(property->getCurrentValue_asBOOL());
    case id::kLinkTimes:
        linkTimes = property->getCurrentValue_asBOOL();
        return;
    case id::kClickFilter:
        clickFilterSamples = Core::truncate<long>(clickFilterRange * value + shortestClickFilter);
        return updateClickFilter();
    case id::kBPMScale:
        timeContext.bpmScale = property->getCurrentValue_asBOOL();
        return;
    case id::kTriggerShift:
        triggerShift = value;
        triggerShiftSamples =
            Core::truncate<long>(0.5f * value * (60.0f / timeContext.tempo) * getSampleRate());
        return;
    case id::kTimeOffset:
        return ducker.setTimeOffset(value);
    default: // trigger sense, envelope hold and the tempo's mirror are not heard
        return;
    }
}

void CQDT_DKS_Single::storeDuckerValue(int duckerParameter, const ParameterProperty& property)
{
    const int parameterId = int(property.getParameterID());
    ducker.setParameter(duckerParameter, property.getCurrentValue());
    if (!loading)
        updateEnvelopeTimes(parameterId);
    lastParameterValues[parameterId] = property.getCurrentValue();
}

// The length of the pre-fade and of the delay, which are one.
void CQDT_DKS_Single::updateClickFilter()
{
    const float samples = getSampleRate() / sampleRateOfClickFilter * float(clickFilterSamples);
    const int length = Core::truncate<int>(samples);
    ducker.setPreFadeLength(length);
    delayLine.setLength(length);
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
    timeAdjust = beats;
    ducker.setTimeAdjust(beats);
}

// The three times have new texts, though not new values.
void CQDT_DKS_Single::notifyTimes()
{
    for (int time : {id::kAttackTime, id::kHoldTime, id::kReleaseTime})
        propertyManager.getPropertyByID(time)->notifyListeners();
}

// Linked times: the shape keeps its place in the beat, because the other two times give way to a change
// of attack or hold. A change of the release alone moves nothing.

static float clampedTo(const ParameterProperty& property, float value)
{
    const float capped = std::min(value, property.getMax());
    return capped < property.getMin() ? property.getMin() : capped;
}

void CQDT_DKS_Single::updateEnvelopeTimes(int changedId)
{
    ParameterProperty* attackTime = propertyManager.getPropertyByID(id::kAttackTime);
    ParameterProperty* releaseTime = propertyManager.getPropertyByID(id::kReleaseTime);
    ParameterProperty* holdTime = propertyManager.getPropertyByID(id::kHoldTime);
    if (!attackTime || !releaseTime || !holdTime)
        return;

    loading = true;
    if (linkTimes)
    {
        const float attack = attackTime->getCurrentValue();
        float hold = holdTime->getCurrentValue();
        float release = releaseTime->getCurrentValue();
        if (changedId == id::kAttackTime)
            linkToAttack(attack, hold, release);
        else if (changedId == id::kHoldTime)
            shortenRelease(release, hold - lastParameterValues[id::kHoldTime]);
        attackTime->setValue(attack);
        releaseTime->setValue(release);
        holdTime->setValue(hold);
    }
    loading = false;
}

// The hold takes over what the attack gained, up to its bounds. Where it meets one, the release gives
// what the hold could give: not the part that the hold couldn't.
void CQDT_DKS_Single::linkToAttack(float attack, float& hold, float& release)
{
    const ParameterProperty& holdTime = *propertyManager.getPropertyByID(id::kHoldTime);
    const float shortest = holdTime.getMin(), longest = holdTime.getMax();
    const float gained = attack - lastParameterValues[id::kAttackTime];
    const float wanted = hold - gained;
    float given = 0.0f;
    if (wanted < shortest)
        given = gained - shortest + wanted;
    else if (wanted > longest)
        given = gained - longest + wanted;
    hold = wanted < shortest ? shortest : std::min(longest, wanted);
    shortenRelease(release, given);
}

void CQDT_DKS_Single::shortenRelease(float& release, float by)
{
    const ParameterProperty& releaseTime = *propertyManager.getPropertyByID(id::kReleaseTime);
    release = clampedTo(releaseTime, by == 0.0f ? release : release - by);
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
    updateClickFilter();
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
    triggerShiftSamples = Core::truncate<long>(60.0f / tempo * 0.5f * getSampleRate() * triggerShift);
    notifyTimes();
    ducker.setTempo(tempo);
}

// Samples from the block's start to the next trigger, by the host's position alone; negative for none.
//
// Every block of the second half of an interval arms the trigger anew, which corrects any drift; in the
// first half nothing is armed, so that a trigger that has just fired stays fired.
long CQDT_DKS_Single::samplesToTrigger(const CHostTimeInfo& time)
{
    const double beat = 60.0 / double(timeContext.tempo);
    const double interval = double(getSampleRate()) * beat * double(timeAdjust);
    const double position = beat * time.ppqPosition * double(getSampleRate());
    long distance = 1;
    if (position > 0.0)
    {
        distance = Core::truncate<long>(std::fmod(position + double(triggerShiftSamples), interval));
        if (distance > 0)
            distance = Core::truncate<long>(interval - double(distance));
    }
    const long half = Core::truncate<int32_t>(interval) >> 1;
    return distance < half ? distance : -1;
}

void CQDT_DKS_Single::armTrigger(const CHostTimeInfo& time)
{
    if (!time.playing || !std::isfinite(time.ppqPosition))
        return ducker.forceNoTrigger();
    const long distance = samplesToTrigger(time);
    if (distance < 0)
        return;
    ducker.setTriggers(distance);
    ducker.setTriggerVelocity(1.0f);
}
