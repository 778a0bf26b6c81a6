// SPDX-License-Identifier: GPL-3.0-or-later
#include "effect/instance/EffectScope.h"

#include "effect/engine/DuckingPath.h"

#include <bit>

static_assert(sizeof(EffectScope::EnvelopePlace) == sizeof(std::uint64_t));

EffectScope::EffectScope() : place(std::bit_cast<std::uint64_t>(EnvelopePlace()))
{
    constexpr float firstVisibleTime = 1000.0f; // milliseconds, until a window knows the tempo
    points.setVisibleTime(firstVisibleTime);
    points.setSyncModeState(true);
}

void EffectScope::show(bool isOn)
{
    if (isOn && points.getNumDataLayer() == 0)
        points.initialize(numLayers);
    else if (isOn)
        points.clear();
    isShown = isOn;
}

EffectScope::EnvelopePlace EffectScope::getEnvelopePlace() const
{
    return std::bit_cast<EnvelopePlace>(place.load(std::memory_order_relaxed));
}

void EffectScope::arm(long samples)
{
    if (isShown)
        points.setRemainingTriggerSamples(samples);
}

void EffectScope::follow(const DuckingPath& path, long frames)
{
    using Channel = Tovra::CMultiLayerScopeDataProvider::channel_info_t;
    if (!isShown)
        return;
    const Orbel::AudioStereoBus &before = path.preDuck(), &after = path.ducked();
    const Channel layers[numLayers] = {{Channel::twoBuffers, Channel::both, before.left, before.right},
                                       {Channel::twoBuffers, Channel::both, after.left, after.right},
                                       {Channel::oneBuffer, Channel::both, path.gainRecord(), nullptr}};
    const Channel* const channels[numLayers] = {&layers[input], &layers[output], &layers[gain]};
    points.update(channels, int(frames));
    const EnvelopePlace now{path.ducker.getEnvelopeSegment(), path.ducker.getEnvelopePhase()};
    place.store(std::bit_cast<std::uint64_t>(now), std::memory_order_relaxed);
}
