// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/AudioBusInformation.h"

#include <algorithm>

namespace Orbel
{
static int wired(int buses)
{
    return std::clamp(buses, 0, AudioBusInformation::maximumBuses);
}

static void wire(AudioStereoBus* buses, float** channels, int count, int frames)
{
    for (int i = 0; i < wired(count); ++i)
        buses[i].createBusWithExternalBuffer(channels + 2L * i, frames);
}

static void advance(AudioStereoBus* buses, int count, int frames)
{
    for (int i = 0; i < wired(count); ++i)
        buses[i].advanceBuffer(frames);
}

AudioBusInformation::AudioBusInformation(float** inputChannels, int numIn, float** outputChannels, int numOut,
                                         int frames)
    : numInputBuses(numIn), numOutputBuses(numOut), numSamples(frames)
{
    wire(inputs, inputChannels, numIn, frames);
    wire(outputs, outputChannels, numOut, frames);
}

void AudioBusInformation::advanceInput(int frames)
{
    advance(inputs, numInputBuses, frames);
}

void AudioBusInformation::advanceOutput(int frames)
{
    advance(outputs, numOutputBuses, frames);
}
}
