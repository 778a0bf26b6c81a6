// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/scope/CMultiLayerScopeDataProvider_SyncFlow.h"

#include <algorithm>

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

// A slice ends where a point is complete, at the trigger, or with the block. It has no samples where the
// trigger is just here.
void CMultiLayerScopeDataProvider_SyncFlow::update(const channel_info_t* const* channels, int samples)
{
    for (int done = 0; done < samples;)
    {
        const float wanted = samplesPerPoint();
        int step = std::clamp(int(wanted - float(sampleCounter)), 1, samples - done);
        if (remainingTriggerSamples >= 0)
            step = int(std::min<long>(step, remainingTriggerSamples));
        gather(channels, done, step);
        remainingTriggerSamples -= step;
        if (remainingTriggerSamples == 0)
            passTrigger();
        count(step, wanted);
        done += step;
    }
}

void CMultiLayerScopeDataProvider_SyncFlow::passTrigger()
{
    remainingTriggerSamples = -1;
    if (!syncMode || ++triggerCount < triggersPerSweep)
        return;
    const Core::Threads::SectionGuard guard(section);
    triggerCount = 0;
    writeIndex = 0;
    sampleCounter = 0;
}

// The points are counted over all samples, so that a length with a fraction averages out.
void CMultiLayerScopeDataProvider_SyncFlow::count(int samples, float wanted)
{
    samplesSeen += std::uint64_t(samples);
    const auto point = std::uint64_t(double(samplesSeen) / double(wanted));
    if (point == lastPointNumber)
    {
        sampleCounter += samples;
        return;
    }
    lastPointNumber = point;
    sampleCounter = 0;
    updatePoints();
}

bool CMultiLayerScopeDataProvider_SyncFlow::getScopeData(int layer, scope_data_point_t* target, int count)
{
    if (!syncMode)
        return CMultiLayerScopeDataProvider::getScopeData(layer, target, count);
    return copyFrom(0, layer, target, count);
}
}
