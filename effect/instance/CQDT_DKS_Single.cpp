// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/instance/CQDT_DKS_Single.h"

#include "CORE/Truncate.h"
#include "Orbel/parameters/ParameterReading.h"
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

constexpr int firstLookAhead = 200;          // samples, for which the delay has room from the start
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
    path.announceLookAhead(firstLookAhead);
    CQDT_DKS_Single::setSampleRate(DuckingPath::referenceRate);
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
    {
        ParameterProperty& property = *propertyManager.getPropertyByID(time);
        property.setContextRenderer(Orbel::renderBPMRelativeTime, &timeContext);
        property.setTextReader(Orbel::readBPMRelativeTime);
    }
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

// Names, as hosts see them.

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
        return path.announceLookAhead(lookAhead());
    case id::kBPMScale:
        return settle(*property, [this](float value) { timeContext.bpmScale = isOn(value); });
    case id::kTriggerShift:
        shiftWrites.fetch_add(1);
        return;
    case id::kTimeOffset:
        return settle(*property, [this](float value) { path.ducker.setTimeOffset(value); });
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
        path.ducker.setParameter(each.target, valueOf(each.source));
    path.setLookAhead(lookAhead());
    if (const unsigned writes = shiftWrites; writes != appliedShiftWrites)
    {
        appliedShiftWrites = writes;
        triggerShiftSamples =
            shiftSamplesOfParameter(valueOf(id::kTriggerShift), timeContext.tempo, getSampleRate());
    }
}

int CQDT_DKS_Single::lookAhead()
{
    return DuckingPath::lookAhead(valueOf(id::kClickFilter), getSampleRate());
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
    path.ducker.setTimeAdjust(beats);
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
    path.setSampleRate(rate);
    scope.setSampleRate(rate);
    path.announceLookAhead(lookAhead());
    triggerShiftSamples = shiftSamplesOfTempo(valueOf(id::kTriggerShift), timeContext.tempo, rate);
}

void CQDT_DKS_Single::setBlockSize(long samples)
{
    if (samples <= 0)
        return;
    OrbelOS::setBlockSize(samples);
    path.reserve(samples);
}

void CQDT_DKS_Single::reset()
{
    applyParameters();
    path.reset();
    scope.reset();
}

// The audio path.

BeatTrigger CQDT_DKS_Single::triggerAt(float tempo)
{
    return {getSampleRate(), tempo, timeContext.timeAdjust, triggerShiftSamples};
}

static bool isTempo(float tempo)
{
    return tempo > 0.0f && std::isfinite(tempo);
}

long CQDT_DKS_Single::getDesiredProcessBlockSize()
{
    const float tempo = isTempo(getBlockTempo()) ? getBlockTempo() : float(timeContext.tempo);
    const long quarter = std::max(Core::truncate<long>(triggerAt(tempo).interval() / 4.0), 1L);
    return getBlockFrames() > quarter ? quarter : -1;
}

void CQDT_DKS_Single::processAudio(AudioBusInformation& info)
{
    const ScopedCpuMode mode(cpuMode, cpuControl::plainMode);
    if (info.numSamples > path.capacity()) // beyond the announced size
        path.reserve(info.numSamples);

    if (resetPending)
    {
        resetPending = false;
        reset();
    }
    applyParameters();

    const bool bypassed = getBypass();
    if (bypassed)
        path.passThrough(info);
    else
    {
        followTransport(info.timeInfo);
        path.duck(info);
    }
    scope.follow(path, info.numSamples);
    if (editorRef)
        editorRef->updateScopes(false, -1);
    if (editorRef && bypassed)
        editorRef->updateData(info.numSamples);
}

void CQDT_DKS_Single::followTransport(const CHostTimeInfo& time)
{
    if (time.tempo != timeContext.tempo)
        takeTempo(time.tempo);
    armTrigger(time);
}

// A tempo that is not above 0 and finite is not taken: the last one stays in force.
void CQDT_DKS_Single::takeTempo(float hostTempo)
{
    if (!isTempo(hostTempo))
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
    path.ducker.setTempo(tempo);
}

void CQDT_DKS_Single::armTrigger(const CHostTimeInfo& time)
{
    if (!time.playing || !std::isfinite(time.ppqPosition))
        return path.ducker.forceNoTrigger();
    const long distance = triggerAt(timeContext.tempo).samplesToNext(time.ppqPosition);
    if (distance == BeatTrigger::none)
        return;
    path.ducker.setTriggers(distance);
    scope.arm(path.ducker.getPreFadeLength() + distance);
    path.ducker.setTriggerVelocity(1.0f);
}
