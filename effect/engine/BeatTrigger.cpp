// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/BeatTrigger.h"

#include "CORE/Truncate.h"

#include <cmath>
#include <cstdint>

double BeatTrigger::interval() const
{
    const double beat = 60.0 / double(tempo); // in seconds
    return double(sampleRate) * beat * double(noteValue);
}

long BeatTrigger::samplesToNext(double ppqPosition) const
{
    const double length = interval();
    const double position = 60.0 / double(tempo) * ppqPosition * double(sampleRate);
    long distance = 1;
    if (position > 0.0)
    {
        distance = Core::truncate<long>(std::fmod(position + double(shiftSamples), length));
        if (distance > 0)
            distance = Core::truncate<long>(length - double(distance));
    }
    const long half = Core::truncate<std::int32_t>(length) >> 1;
    return distance >= 0 && distance < half ? distance : none;
}

long shiftSamplesOfParameter(float shift, float tempo, float sampleRate)
{
    return Core::truncate<long>(0.5f * shift * (60.0f / tempo) * sampleRate);
}

long shiftSamplesOfTempo(float shift, float tempo, float sampleRate)
{
    return Core::truncate<long>(60.0f / tempo * 0.5f * sampleRate * shift);
}
