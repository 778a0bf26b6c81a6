// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/scope/CMultiLayerScopeDataProvider_SyncFlow.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
void CMultiLayerScopeDataProvider_SyncFlow::setSyncModeState(bool isOn)
{
    reset();
    syncMode = isOn;
    clearPoints();
}

CMultiLayerScopeDataProvider_SyncFlow::scope_data_point_t
CMultiLayerScopeDataProvider_SyncFlow::adapted(const channel_info_t& channel,
                                               const scope_data_point_t& found) const
{
    if (channel.kind == channel_info_t::oneBuffer)
        return {-found.max, -found.min};
    return found;
}

// The points are counted from the start of the sweep, so that they lie at the same places of each sweep
// whatever the blocks are, and a length with a fraction averages out. A new length begins to count anew.
long CMultiLayerScopeDataProvider_SyncFlow::samplesToPoint()
{
    const float wanted = samplesPerPoint();
    if (wanted != pointLength)
    {
        pointLength = wanted;
        samplesSeen = pointsSeen = 0;
    }
    const double end = double(pointsSeen + 1) * double(pointLength);
    return std::max(long(std::ceil(end)) - samplesSeen, 1L);
}

// A slice ends where a point is complete, at the trigger, or with the block. It has no samples where the
// trigger is just here.
void CMultiLayerScopeDataProvider_SyncFlow::update(const channel_info_t* const* channels, int samples)
{
    for (int done = 0; done < samples;)
    {
        const long toPoint = samplesToPoint();
        long step = std::min<long>(toPoint, samples - done);
        if (remainingTriggerSamples >= 0)
            step = std::min(step, remainingTriggerSamples);
        gather(channels, done, int(step));
        count(step, step == toPoint);
        remainingTriggerSamples -= step;
        if (remainingTriggerSamples == 0)
            passTrigger();
        done += int(step);
    }
}

void CMultiLayerScopeDataProvider_SyncFlow::count(long samples, bool isComplete)
{
    samplesSeen += samples;
    sampleCounter = isComplete ? 0 : sampleCounter + int(samples);
    if (!isComplete)
        return;
    ++pointsSeen;
    updatePoints();
}

// What lies before the trigger is no part of the first point after it.
void CMultiLayerScopeDataProvider_SyncFlow::passTrigger()
{
    remainingTriggerSamples = -1;
    if (!syncMode || ++triggerCount < triggersPerSweep)
        return;
    triggerCount = 0;
    samplesSeen = pointsSeen = 0;
    sampleCounter = 0;
    const Core::Threads::SectionGuard guard(section);
    writeIndex = 0;
}

bool CMultiLayerScopeDataProvider_SyncFlow::getScopeData(int layer, scope_data_point_t* target, int count)
{
    if (!syncMode)
        return CMultiLayerScopeDataProvider::getScopeData(layer, target, count);
    return copyFrom(0, layer, target, count);
}
}
