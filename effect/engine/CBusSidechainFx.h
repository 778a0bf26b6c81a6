// SPDX-License-Identifier: GPL-3.0-or-later
// The ducker: multiplies one stereo bus by a gain that follows an envelope, and hides the start of each
// envelope behind a crossfade.
//
// The effect arms a trigger with the count of samples until it falls due. At the trigger a pre-fade
// begins, which leads the gain from the running envelope to the value with which the next cycle starts;
// when it is over, preFadeLength samples later, that cycle starts, and no step is heard. The effect
// delays the audio by the same length.
//
// process, setTriggers, forceNoTrigger, setTempo, setSampleRate and reset belong to one thread at a time,
// the audio thread or the one that stopped it. setParameter, setPreFadeLength, setTimeAdjust and
// setTimeOffset may come on any thread while that one runs; they are heard from the next sample that
// looks at them. Nothing allocates or locks.
#pragma once

#include "CORE/Relaxed.h"
#include "Orbel/contract/AudioStereoBus.h"
#include "effect/engine/CAHRModule2.h"
#include "effect/engine/CFaderModule.h"

#include <atomic>

class CBusSidechainFx
{
public:
    enum Parameter
    {
        attackTime = 0, // times in milliseconds at 128 beats a minute
        attackCurve = 1,
        holdTime = 2,
        releaseTime = 3,
        releaseCurve = 4,
        strength = 5,   // depth of the ducking, 0 to 1
        outputGain = 6, // of the bus
        numParameters = 7
    };

    CBusSidechainFx();

    // [audio thread] In place, on the first frames samples of both channels. gainRecord gets, for each
    // sample, 1 - 2 x gain: -1 where nothing is ducked, +1 where all is.
    void process(Orbel::AudioStereoBus& bus, float* gainRecord, long frames);

    // [any thread] index is one of Parameter; others are ignored.
    void setParameter(int index, float value);
    // [any thread] In samples.
    void setPreFadeLength(long samples) { preFadeLength = samples; }
    long getPreFadeLength() const { return preFadeLength; }
    // [any thread] The length of the cycle in beats.
    void setTimeAdjust(float beats);
    // [any thread] The place in the cycle, as a share of the shape, at which a start enters: 0 to 1.
    void setTimeOffset(float share);

    // [audio thread] In beats a minute, above 0.
    void setTempo(float beatsPerMinute);
    // [audio stopped] In hertz.
    void setSampleRate(float rate);

    // [audio thread] Arms a trigger that many samples ahead, in place of one that is armed and hasn't fired.
    void setTriggers(long samples);
    // [audio thread] From 0 to 1, for the next trigger.
    void setTriggerVelocity(float next) { pendingVelocity = next; }
    // [audio thread] Disarms. An envelope that runs is left to finish.
    void forceNoTrigger();
    // [audio stopped] Silence and idleness; parameters stay, and hold without any ease from the next sample.
    void reset();

    // [audio thread] See CAHRModule2.
    int getEnvelopeSegment() const { return envelope.getSegment(); }
    float getEnvelopePhase() const { return envelope.getPhase(); }

    // [any thread] A slow average of the gain.
    float getGainMeter() const { return gainMeter; }

private:
    // A parameter on its way: current follows target at the smoothing passes.
    struct Entry
    {
        float current = 0.0f;
        Core::Relaxed<float> target = 1.0f;
    };

    void applyShape();
    void runSmoothingPass();
    void passOn(int index);
    void runCountdowns();
    void beginPreFade();
    long samplesToNextEvent(long atMost) const;

    template <bool exact>
    void processPiece(float* left, float* right, float* gainRecord, long samples);
    template <bool exact, bool fading>
    void processRun(float* left, float* right, float* gainRecord, long samples);
    template <bool exact>
    void processConstant(float* left, float* right, float* gainRecord, long samples);

    Entry entry[numParameters];
    long samplesSinceUpdate; // since the last smoothing pass
    float velocity = 1.0f;   // of the running trigger
    float pendingVelocity = 1.0f;
    float depth = 0.0f; // strength x velocity
    float gain = 0.0f;
    Core::Relaxed<float> gainMeter = 0.0f;
    long samplesToEnvelopeStart = -1; // 0: now. Goes on below 0
    long samplesToTrigger = -1;       // 0: the pre-fade begins now
    long samplesToStop = -1;          // 0: the envelope is let go. Nothing in this product arms it
    Core::Relaxed<long> preFadeLength = 0;
    CFaderModule fader;
    CAHRModule2 envelope;
    float tempo = 10.0f;
    bool initialised = false; // false until the first smoothing pass, which passes everything on

    // The shape of the cycle, from any thread: the values, and how often the envelope has to be refreshed.
    Core::Relaxed<float> timeAdjust = 1.0f;
    Core::Relaxed<float> startPosition = 0.0f;
    std::atomic<int> pendingRefreshes = 0;
};
