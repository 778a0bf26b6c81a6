// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/DuckingPath.h"

#include "CORE/Truncate.h"

#include <algorithm>

using Orbel::AudioBusInformation;
using Orbel::AudioStereoBus;

// In samples at the reference rate.
constexpr float shortestLookAhead = 5.0f;
constexpr float lookAheadRange = 500.0f; // above the shortest

int DuckingPath::lookAhead(float clickFilter, float sampleRate)
{
    const long atReference = Core::truncate<long>(lookAheadRange * clickFilter + shortestLookAhead);
    return Core::truncate<int>(sampleRate / referenceRate * float(atReference));
}

void DuckingPath::setSampleRate(float rate)
{
    ducker.setSampleRate(rate);
    const float longest = rate / referenceRate * (lookAheadRange + shortestLookAhead);
    delayLine.reserve(Core::truncate<int>(longest), capacity());
}

void DuckingPath::reserve(long frames)
{
    for (AudioStereoBus* bus : {&busPreDuck, &busOutput, &busGainRecord})
        bus->createBusWithOwnBuffer(frames);
    delayLine.reserve(0, frames);
}

void DuckingPath::reset()
{
    ducker.reset();
    for (AudioStereoBus* bus : {&busPreDuck, &busOutput, &busGainRecord})
        bus->clear(0);
    delayLine.clear();
}

void DuckingPath::setLookAhead(int samples)
{
    ducker.setPreFadeLength(samples);
    delayLine.setLength(samples);
}

static AudioStereoBus* firstBus(AudioStereoBus* buses, int count)
{
    return count > 0 && buses[0].left && buses[0].right ? &buses[0] : nullptr;
}

static void copyInput(AudioBusInformation& info, AudioStereoBus& destination)
{
    if (AudioStereoBus* input = firstBus(info.inputs, info.numInputBuses))
        destination.copyFrom(input, info.numSamples);
    else if (info.numSamples > 0)
        destination.clear(info.numSamples);
}

static void copyOutput(AudioBusInformation& info, AudioStereoBus& source)
{
    if (AudioStereoBus* output = firstBus(info.outputs, info.numOutputBuses))
        output->copyFrom(&source, info.numSamples);
}

void DuckingPath::duck(AudioBusInformation& info)
{
    const long frames = info.numSamples;
    copyInput(info, busPreDuck);
    delayLine.process(busPreDuck, frames);
    busOutput.copyFrom(&busPreDuck, frames);
    ducker.process(busOutput, busGainRecord.left, frames);
    copyOutput(info, busOutput);
}

void DuckingPath::passThrough(AudioBusInformation& info)
{
    const long frames = info.numSamples;
    copyInput(info, busOutput);
    delayLine.process(busOutput, frames);
    copyOutput(info, busOutput);
    for (float* record : {busGainRecord.left, busGainRecord.right})
        std::fill_n(record, std::max(frames, 0L), -1.0f);
}
