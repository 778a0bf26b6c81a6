// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/engine/CBusSidechainFx.h"

#include "effect/engine/ExactGain.h"

#include <algorithm>
#include <cmath>

constexpr long samplesBetweenPasses = 22;
constexpr float envelopeClosing = 4.0f;      // milliseconds
constexpr float tempoBeforeTheFirst = 10.0f; // beats a minute

// Where each smoothed parameter goes in the envelope; strength and gain stay here.
constexpr int envelopeParameter[] = {CAHRModule2::attackTime, CAHRModule2::attackCurve, CAHRModule2::holdTime,
                                     CAHRModule2::releaseTime, CAHRModule2::releaseCurve};

// One step of the slow average, in double precision, rounded to single; both are 0 or above.
static double meterStep(double meter, float gain)
{
    return roundedToSingle(meter + (double(gain) - meter) * 0.01);
}

CBusSidechainFx::CBusSidechainFx() : samplesSinceUpdate(samplesBetweenPasses)
{
    for (int time : {attackTime, holdTime, releaseTime})
        entry[time].target = 0.0f;
    envelope.setParameter(CAHRModule2::peakLevel, 1.0f);
    envelope.setParameter(CAHRModule2::endLevel, 0.0f);
    envelope.setParameter(CAHRModule2::startLevel, 0.0f);
    envelope.setParameter(CAHRModule2::closingTime, envelopeClosing);
    envelope.setTempo(tempoBeforeTheFirst);
    envelope.setSampleRate(44100.0f);
}

void CBusSidechainFx::setParameter(int index, float value)
{
    if (index >= 0 && index < numParameters)
        entry[index].target = value;
}

void CBusSidechainFx::setTimeAdjust(float beats)
{
    timeAdjust = beats;
    pendingRefreshes.fetch_add(1, std::memory_order_release);
}

void CBusSidechainFx::setTimeOffset(float share)
{
    startPosition = 1.0f - share;
    pendingRefreshes.fetch_add(1, std::memory_order_release);
}

// Brings a new shape to the envelope, on the thread that runs it.
void CBusSidechainFx::applyShape()
{
    if (pendingRefreshes.load(std::memory_order_relaxed) == 0)
        return;
    const int refreshes = pendingRefreshes.exchange(0, std::memory_order_acquire);
    envelope.setShape(startPosition, timeAdjust, refreshes);
}

void CBusSidechainFx::setTempo(float beatsPerMinute)
{
    applyShape();
    tempo = beatsPerMinute;
    envelope.setTempo(beatsPerMinute);
    samplesSinceUpdate = samplesBetweenPasses; // the next sample runs a pass
}

void CBusSidechainFx::setSampleRate(float rate)
{
    applyShape();
    envelope.setSampleRate(rate);
}

void CBusSidechainFx::setTriggers(long samples)
{
    samplesToTrigger = samples;
    samplesToEnvelopeStart = samples + preFadeLength;
}

void CBusSidechainFx::forceNoTrigger()
{
    samplesToTrigger = samplesToEnvelopeStart = -1;
}

void CBusSidechainFx::reset()
{
    applyShape();
    initialised = false;
    envelope.reset();
    fader.active = false;
    samplesToEnvelopeStart = samplesToStop = samplesToTrigger = -1;
    gainMeter = 0.0f;
    envelope.setTempo(tempo);
    for (Entry& each : entry)
        each.current = each.target;
    for (int index : {attackCurve, holdTime, releaseTime, releaseCurve})
        passOn(index);
}

void CBusSidechainFx::passOn(int index)
{
    const float value = entry[index].current;
    if (index == strength)
        depth = velocity * value;
    else if (index == outputGain)
        gain = value;
    else
        envelope.setParameter(envelopeParameter[index], value);
}

// A move of more than 0.002 is taken in one step; only the last hair of a move eases in.
static float smoothed(float current, float target)
{
    const double distance = double(target - current);
    const double size = std::abs(distance);
    if (size > 0.002 || size <= 0.001)
        return target;
    return float(double(current) + 1e-19 + 0.1 * distance);
}

void CBusSidechainFx::runSmoothingPass()
{
    for (int index = 0; index < numParameters; ++index)
    {
        Entry& each = entry[index];
        const float target = each.target;
        if (each.current != target)
            each.current = smoothed(each.current, target);
        else if (initialised)
            continue;
        passOn(index);
    }
    samplesSinceUpdate = 0;
    initialised = true;
}

// What falls due at this sample.
void CBusSidechainFx::runCountdowns()
{
    if (++samplesSinceUpdate > samplesBetweenPasses)
        runSmoothingPass();
    if (samplesToEnvelopeStart == 0)
    {
        fader.active = false;
        envelope.start();
    }
    if (samplesToStop == 0)
        envelope.stop();
    if (samplesToTrigger == 0)
        beginPreFade();
}

void CBusSidechainFx::beginPreFade()
{
    fader.setFadeSamples(int(preFadeLength));
    fader.active = true;
    velocity = pendingVelocity;
    depth = entry[strength].current * velocity;
}

// Samples, this one included, until runCountdowns has something to do again.
long CBusSidechainFx::samplesToNextEvent(long atMost) const
{
    long samples = std::min(atMost, samplesBetweenPasses + 1 - samplesSinceUpdate);
    for (long countdown : {samplesToEnvelopeStart, samplesToStop, samplesToTrigger})
        if (countdown > 0)
            samples = std::min(samples, countdown);
    return samples;
}

void CBusSidechainFx::process(Orbel::AudioStereoBus& bus, float* gainRecord, long frames)
{
    applyShape();
    depth = entry[strength].current * velocity;
    gain = entry[outputGain].current;
    if (!initialised)
        samplesSinceUpdate = 50000;

    for (long done = 0; done < frames;)
    {
        runCountdowns();
        const long run = samplesToNextEvent(frames - done);
        float *pieceLeft = bus.left + done, *pieceRight = bus.right + done;
        if (needsExactGain(pieceLeft, pieceRight, run))
            processPiece<true>(pieceLeft, pieceRight, gainRecord + done, run);
        else
            processPiece<false>(pieceLeft, pieceRight, gainRecord + done, run);

        samplesSinceUpdate += run - 1;
        samplesToEnvelopeStart -= run;
        samplesToStop -= run;
        samplesToTrigger -= run;
        done += run;
    }
}

template <bool exact>
static void multiply(float& left, float& right, float gain)
{
    if constexpr (exact)
        return multiplyExactly(left, right, gain);
    left *= gain;
    right *= gain;
}

// At most samplesBetweenPasses + 1 samples, between two events; exact where samples may be tiny.
template <bool exact>
void CBusSidechainFx::processPiece(float* left, float* right, float* gainRecord, long samples)
{
    if (fader.active)
        processRun<exact, true>(left, right, gainRecord, samples);
    else if (envelope.isConstant())
        processConstant<exact>(left, right, gainRecord, samples);
    else
        processRun<exact, false>(left, right, gainRecord, samples);
}

// One sample after the other, everything in one loop: the meter's average waits for its own last value
// at every sample, and all other work fits into that wait, as long as no call comes between.
template <bool exact, bool fading>
void CBusSidechainFx::processRun(float* left, float* right, float* gainRecord, long samples)
{
    static_assert(CFaderModule::maximumSteps > samplesBetweenPasses);
    float weights[CFaderModule::maximumSteps];
    if constexpr (fading)
        fader.nextWeights(weights, int(samples));
    const float open = 1.0f - depth, deep = depth, outGain = gain;
    const float next = 1.0f - envelope.getFirstValue(); // of the coming cycle's first level
    double meter = gainMeter;
    long i = 0;

    envelope.process(
        samples, [&](float level) __attribute__((always_inline)) {
            float closed = 1.0f - level;
            if constexpr (fading)
                closed = closed * weights[i] + (1.0f - weights[i]) * next;
            const float g = (open + closed * deep) * outGain;
            multiply<exact>(left[i], right[i], g);
            gainRecord[i] = 1.0f - g - g;
            meter = meterStep(meter, g);
            ++i;
        });
    gainMeter = float(meter);
}

// An idle envelope: one gain for all samples, and an average that settles.
template <bool exact>
void CBusSidechainFx::processConstant(float* left, float* right, float* gainRecord, long samples)
{
    float level = 0.0f;
    envelope.process(samples, [&level](float value) { level = value; });
    const float g = ((1.0f - depth) + (1.0f - level) * depth) * gain;

    for (long i = 0; i < samples; ++i)
        multiply<exact>(left[i], right[i], g);
    std::fill_n(gainRecord, samples, 1.0f - g - g);

    double meter = gainMeter, before = -1.0;
    for (long i = 0; i < samples && meter != before; ++i)
    {
        before = meter;
        meter = meterStep(meter, g);
    }
    gainMeter = float(meter);
}
