// SPDX-License-Identifier: GPL-3.0-or-later
// What an open window sees of the running audio: the points of its scope, and where the envelope is. Without
// a window nothing is gathered.
#pragma once

#include "CORE/Relaxed.h"
#include "Tovrane/scope/CMultiLayerScopeDataProvider_SyncFlow.h"

#include <atomic>
#include <cstdint>

class DuckingPath;

class EffectScope
{
public:
    enum Layer : int
    {
        input = 0,  // after the delay, in step with the output
        output = 1, // ducked
        gain = 2,   // full gain at the top
        numLayers = 3
    };

    // The attack, the hold or the release, and the share of it that has passed, 0 to 1. Any other segment is
    // not drawn.
    struct EnvelopePlace
    {
        std::int32_t segment = -1;
        float fraction = 0.0f;
    };

    EffectScope();

    // [window thread]  Begins with empty layers, which are made at the first time; or ends.
    void show(bool isOn);
    // Its lock may be tried, and its visible time set, on the window thread.
    Tovra::CMultiLayerScopeDataProvider_SyncFlow& data() { return points; }
    // [window thread]
    EnvelopePlace getEnvelopePlace() const;

    // [audio stopped]  In hertz.
    void setSampleRate(float rate) { points.setSampleRate(rate); }
    // [audio stopped]
    void reset() { points.reset(); }
    // [audio thread]  The next trigger, in samples from the next block on, as the delayed audio has it.
    void arm(long samples);
    // [audio thread]  A block has passed.
    void follow(const DuckingPath& path, long frames);

private:
    Tovra::CMultiLayerScopeDataProvider_SyncFlow points;
    Core::Relaxed<bool> isShown = false;
    std::atomic<std::uint64_t> place; // an EnvelopePlace, in one word
};
