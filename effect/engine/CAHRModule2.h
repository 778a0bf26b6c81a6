// SPDX-License-Identifier: GPL-3.0-or-later
// The ducker's envelope: a level from 0 to 1 for one cycle of attack, hold, release and rest, a beat long
// (or another note value), sample by sample.
//
// Times are milliseconds at 128 beats a minute and scale with the tempo, so that a shape covers the same
// part of a beat at any tempo. A cycle ends by itself, or early when the beat is over: the envelope then
// closes in a few milliseconds from wherever it stands.
//
// Not thread-safe, allocates nothing: CBusSidechainFx owns one and makes every call on the audio thread.
#pragma once

#include "effect/engine/EarlyCurve.h"

#include <cmath>
#include <cstdint>

class CAHRModule2
{
public:
    enum Parameter
    {
        startPosition = 0, // 1 - the place in the cycle, as a share of the shape, at which a start enters
        startLevel = 1,
        attackTime = 2,
        attackCurve = 3,
        peakLevel = 4,
        holdTime = 5,
        releaseTime = 6,
        releaseCurve = 7,
        endLevel = 8,
        closingTime = 9, // in milliseconds at any tempo
        numParameters = 10
    };

    // Takes effect at once, also within a segment: the level jumps to the new bounds at the same phase.
    // index is one of Parameter; others are ignored.
    void setParameter(int index, float value);
    void setSampleRate(float rate);           // hertz
    void setTempo(float beatsPerMinute);      // above 0
    void setBeatMultiplier(float multiplier); // length of the cycle in beats
    // The start position and the beat multiplier in one, as that many calls of the two above would set
    // them: the count matters while the envelope closes, where each takes the present level as a new start.
    void setShape(float newStartPosition, float multiplier, int calls);

    // Begins a cycle at once, from any state, without smoothing.
    void start();
    // Lets a held envelope go on.
    void stop() { holdActive = false; }
    // Goes idle. The segment that was running stays until the next refresh or start.
    void reset() { state = idle; }

    // The level of this sample; one step ahead.
    float process();
    // Calls sink(level) for each of the next samples: the same levels as process() gives one by one.
    template <typename Sink>
    void process(long samples, Sink&& sink);

    // The level with which the last start entered its cycle. It belongs to that start: a parameter that
    // changes later doesn't move it.
    float getFirstValue() const { return firstValue; }
    // Where it is: 0 attack, 1 hold, 2 release, then what follows; and the share of that which has passed, 0
    // at its start and 1 at its end.
    int getSegment() const { return state; }
    float getPhase() const { return phase; }
    // True while every sample has the same level.
    bool isConstant() const { return state == idle && segmentDelta == 0.0f && phaseIncrement == 0.0f; }

    // Holds at the peak until stop(). Nothing in this product sets it.
    bool holdUntilStop = false;

private:
    enum State : int32_t
    {
        attack = 0,
        hold = 1,
        release = 2,
        rest = 3,
        closing = 4,
        idle = 5
    };

    void refresh();
    void updateTimes();
    void buildSegment();
    void setSegment(float from, float to, double increment, float curve);
    bool enterNextState();
    void beginClosing();
    void beginStep();
    long samplesToTheBeatsEnd(long atMost) const;
    float curved(float position) const;
    float levelAt(float position) const { return curved(position) * segmentDelta + segmentStart; }

    template <typename Curve, typename Sink>
    long runSegment(long samples, Curve&& curve, Sink&& sink);

    float parameter[numParameters] = {};
    double rate[4] = {}; // phase a sample, of attack, hold, release and rest
    bool holdActive = false;
    bool countSample = true; // false while held: such a sample doesn't use up the beat
    int32_t state = attack;
    float phase = 0.0f; // position in the segment, 0 to 1
    float segmentStart = 0.0f;
    float segmentDelta = 0.0f;
    float phaseIncrement = 0.0f; // a sample
    float segmentCurve = 0.0f;   // 0 is a straight line
    double samplesPerMs = 44.1;
    bool wrapPending = false; // the rest leads back into the attack, once
    int32_t sampleCount = 0;  // since the start
    int32_t totalSamples = 0; // length of the cycle
    float tempo = 120.0f;
    float beatMultiplier = 1.0f;
    float firstValue = 0.0f;
    EarlyCurve early; // of the last segment with a negative curve
};

// A curve bends the position x in a segment: positive curves move late, negative ones early (EarlyCurve).
// The two are mirror images, with an exponent of at least 1.
inline float lateCurve(float x, float curve)
{
    return powf(x, curve + 1.0f);
}

template <typename Sink>
void CAHRModule2::process(long samples, Sink&& sink)
{
    while (samples > 0)
    {
        beginStep();
        const long run = samplesToTheBeatsEnd(samples);
        const float curve = segmentCurve;
        if (curve == 0.0f)
            samples -= runSegment(
                run, [](float x) { return x; }, sink);
        else if (curve > 0.0f)
            samples -= runSegment(
                run, [curve](float x) { return lateCurve(x, curve); }, sink);
        else
        {
            EarlyCurve local = early;
            local.setCurve(curve);
            samples -= runSegment(
                run, [&local](float x) { return local.at(x); }, sink);
            early = local;
        }
    }
}

// Runs at most the given count of samples, and up to the end of the segment. At least one sample runs.
template <typename Curve, typename Sink>
long CAHRModule2::runSegment(long samples, Curve&& curve, Sink&& sink)
{
    const float start = segmentStart, delta = segmentDelta, increment = phaseIncrement;
    const float end = state == idle ? INFINITY : 1.0f;
    float x = phase;
    long done = 0;
    do
    {
        const float inside = x > 0.0f ? (x > 1.0f ? 1.0f : x) : 0.0f;
        sink(curve(inside) * delta + start);
        x += increment;
        ++done;
    } while (done < samples && x < end);
    phase = x;
    if (countSample && sampleCount < INT32_MAX - done)
        sampleCount += int32_t(done);
    return done;
}
