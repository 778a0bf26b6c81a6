// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/CAHRModule2.h"

#include "CORE/Truncate.h"

#include <algorithm>

constexpr float shortestTime = 0.01f;       // milliseconds at 128 beats a minute, of every segment
constexpr float shortestAttack = 4.0f;      // milliseconds at any tempo
constexpr float beatAt128 = 468.75f;        // milliseconds
constexpr float attackThatIsSkipped = 1.0f; // a stored attack below this many milliseconds
constexpr int numTimedSegments = 3;
constexpr int phase_time_map[numTimedSegments] = {CAHRModule2::attackTime, CAHRModule2::holdTime,
                                                  CAHRModule2::releaseTime};

static float fraction(float x)
{
    return x - truncf(x);
}

void CAHRModule2::setParameter(int index, float value)
{
    if (index < 0 || index >= numParameters)
        return;
    parameter[index] = value;
    refresh();
}

void CAHRModule2::setSampleRate(float newRate)
{
    samplesPerMs = double(newRate) * 0.001;
    refresh();
}

void CAHRModule2::setTempo(float beatsPerMinute)
{
    tempo = beatsPerMinute;
    refresh();
}

void CAHRModule2::setBeatMultiplier(float multiplier)
{
    beatMultiplier = multiplier;
    refresh();
}

void CAHRModule2::setShape(float newStartPosition, float multiplier, int calls)
{
    parameter[startPosition] = newStartPosition;
    beatMultiplier = multiplier;
    updateTimes();
    for (int i = 0; i < calls; ++i)
        buildSegment();
}

void CAHRModule2::refresh()
{
    updateTimes();
    buildSegment();
}

// Single precision up to the time of each segment, double from there.
void CAHRModule2::updateTimes()
{
    const float scale = 128.0f / tempo * beatMultiplier;
    const float attackMs = std::max(std::max(parameter[attackTime], shortestTime) * scale, shortestAttack);
    const float holdMs = std::max(parameter[holdTime], shortestTime) * scale;
    const float releaseMs = std::max(parameter[releaseTime], shortestTime) * scale;
    const float cycleMs = beatAt128 * scale;
    const float restMs = cycleMs - holdMs - releaseMs - attackMs;

    rate[attack] = 1.0 / (double(attackMs) * samplesPerMs);
    rate[hold] = 1.0 / (double(holdMs) * samplesPerMs);
    rate[release] = 1.0 / (double(releaseMs) * samplesPerMs);
    rate[rest] = restMs > 0.0f ? 1.0 / (double(restMs) * samplesPerMs) : 1.0; // no rest: one sample
    totalSamples = Core::truncate<int32_t>(double(cycleMs) * samplesPerMs);
}

void CAHRModule2::setSegment(float from, float to, double increment, float curve)
{
    segmentStart = from;
    segmentDelta = to - from;
    phaseIncrement = float(increment);
    segmentCurve = curve;
}

// The segment of the present state. The phase stays, but for the idle state.
void CAHRModule2::buildSegment()
{
    const float peak = parameter[peakLevel], end = parameter[endLevel];
    switch (state)
    {
    case attack:
        return setSegment(parameter[startLevel], peak, rate[attack], parameter[attackCurve]);
    case hold:
        return setSegment(peak, peak, rate[hold], 0.0f);
    case release:
        return setSegment(peak, end, rate[release], parameter[releaseCurve]);
    case rest:
        return setSegment(end, end, rate[rest], 0.0f);
    case closing:
        return setSegment(levelAt(phase), end, 1.0 / (double(parameter[closingTime]) * samplesPerMs), 0.0f);
    default:
        phase = 0.0f;
        return setSegment(end, end, 0.0, 0.0f);
    }
}

float CAHRModule2::curved(float position) const
{
    const float x = position > 0.0f ? std::min(position, 1.0f) : 0.0f;
    if (segmentCurve == 0.0f)
        return x;
    return segmentCurve > 0.0f ? lateCurve(x, segmentCurve) : EarlyCurve::exact(x, segmentCurve);
}

void CAHRModule2::start()
{
    holdActive = holdUntilStop;

    const float position = std::clamp(parameter[startPosition], -1.0f, 1.0f);
    const float share = fraction(position < 1.0f ? 1.0f - position : position);
    float left = (parameter[attackTime] + parameter[holdTime] + parameter[releaseTime]) * share;
    wrapPending = left > 0.0f;

    int segment = 0;
    while (segment < numTimedSegments && left > 0.0f && left > parameter[phase_time_map[segment]])
        left -= parameter[phase_time_map[segment++]];

    // By rounding the walk may pass the release; what is left then counts in the rest.
    const float time = segment < numTimedSegments ? parameter[phase_time_map[segment]] : 1.0f;
    state = segment;
    phase = std::max(0.0f, left) / std::max(time, 1.0f);
    if (parameter[attackTime] < attackThatIsSkipped && state == attack)
        state = hold;

    updateTimes();
    sampleCount = 0;
    buildSegment();
    firstValue = levelAt(phase);
}

// What a segment's end leads to. False while the envelope is held at the end of its hold.
bool CAHRModule2::enterNextState()
{
    if (state == hold && holdActive)
    {
        phase = 1.0f;
        return false;
    }
    if (state == rest && wrapPending)
    {
        wrapPending = false;
        state = attack;
    }
    else
        ++state;
    return true;
}

void CAHRModule2::beginClosing()
{
    state = closing;
    buildSegment();
    phase = 0.0f;
}

// What comes ahead of a sample's level: the change of segments, and the end of the beat.
void CAHRModule2::beginStep()
{
    countSample = true;
    if (state == idle)
        return;
    if (phase >= 1.0f)
    {
        if (enterNextState())
        {
            buildSegment(); // closing takes its start from the old segment at the old phase
            phase = fraction(phase);
        }
        else
            countSample = false;
    }
    if (state < closing && sampleCount > totalSamples)
        beginClosing();
}

// Samples that may run before the count of the beat has to be looked at again.
long CAHRModule2::samplesToTheBeatsEnd(long atMost) const
{
    if (!countSample)
        return 1;
    if (state >= closing)
        return atMost;
    return std::min(atMost, long(totalSamples) - sampleCount + 1);
}

float CAHRModule2::process()
{
    float level = 0.0f;
    process(1, [&level](float value) { level = value; });
    return level;
}
