// SPDX-License-Identifier: GPL-3.0-or-later
// A scope whose sweep starts at a trigger, so that its picture stands still in relation to the beat: every
// second trigger sends the writing point back to the left edge.
//
// A layer of one buffer is a gain record, -1 for not ducked and +1 for silence, and is shown upside down:
// full gain at the top.
#pragma once

#include "Tovrane/scope/CMultiLayerScopeDataProvider.h"

namespace Tovra
{
class CMultiLayerScopeDataProvider_SyncFlow : public CMultiLayerScopeDataProvider
{
public:
    static constexpr int triggersPerSweep = 2;

    // [audio stopped]  Sweeps by triggers, or runs freely, as at first. Clears everything.
    void setSyncModeState(bool isOn);
    // [window thread]  Clears what was written; the sweep goes on where it is.
    void clear() { clearPoints(); }

    // [audio thread]  The next trigger is that many samples ahead of the next block, as the delayed audio has
    // it. Below 0 none is known.
    void setRemainingTriggerSamples(long samples) { remainingTriggerSamples = samples; }
    void update(const channel_info_t* const* channels, int samples) override;
    // In sync mode the leftmost point is the start of the sweep, and not the oldest one.
    bool getScopeData(int layer, scope_data_point_t* target, int count) override;

protected:
    scope_data_point_t adapted(const channel_info_t& channel, const scope_data_point_t& found) const override;

private:
    long samplesToPoint();
    void count(long samples, bool isComplete);
    void passTrigger();

    bool syncMode = false;
    int triggerCount = 0;     // of this sweep
    long samplesSeen = 0;     // in this sweep
    long pointsSeen = 0;      // of these
    float pointLength = 0.0f; // samples, by which they are counted
    long remainingTriggerSamples = -1;
};
}
