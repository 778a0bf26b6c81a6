// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/scope/CMultiLayerScopeDataProvider.h"

#include "DSP/VectorPrimitives.h"

#include <algorithm>

namespace Tovra
{
using Point = IScopeDataProvider::scope_data_point_t;

void CMultiLayerScopeDataProvider::initialize(int layers)
{
    handOver(std::clamp(layers, 0, maximumLayers), numPoints);
}

void CMultiLayerScopeDataProvider::setNumDataPoints(int points)
{
    handOver(numLayers, std::max(points, 1));
}

void CMultiLayerScopeDataProvider::handOver(int layers, int points)
{
    std::array<Points, maximumLayers> made;
    for (int i = 0; i < layers; ++i)
        made[size_t(i)].resize(size_t(points));
    {
        const Core::Threads::SectionGuard guard(section);
        rings.swap(made);
        numLayers = layers;
        numPoints = points;
        writeIndex = 0;
    }
} // the former rings go here

void CMultiLayerScopeDataProvider::clearPoints()
{
    handOver(numLayers, numPoints);
}

float CMultiLayerScopeDataProvider::samplesPerPoint() const
{
    const float samples = float(visibleTime) * float(sampleRate) * 0.001f / float(int(numPoints));
    return samples >= 1.0f ? samples : 1.0f; // also in place of a NaN
}

void CMultiLayerScopeDataProvider::reset()
{
    const Core::Threads::SectionGuard guard(section);
    sampleCounter = 0;
    writeIndex = 0;
}

// The audio side

static Point extremesOf(const float* buffer, int samples)
{
    Point found;
    ippsMin_32f(buffer, samples, &found.min);
    ippsMax_32f(buffer, samples, &found.max);
    return found;
}

static Point united(const Point& a, const Point& b)
{
    return {std::min(a.min, b.min), std::max(a.max, b.max)};
}

// What is not known, or has no buffers, leaves the open point as it is.
static bool extremesOf(const CMultiLayerScopeDataProvider::channel_info_t& channel, int offset, int samples,
                       Point& found)
{
    using Channel = CMultiLayerScopeDataProvider::channel_info_t;
    const bool isOne = channel.kind == Channel::oneBuffer;
    const bool hasSecond = !isOne && channel.selection != Channel::first;
    const bool hasFirst = isOne || channel.selection != Channel::second;
    if ((!isOne && channel.kind != Channel::twoBuffers) || !channel.firstBuffer ||
        (!isOne && !channel.secondBuffer))
        return false;
    found = extremesOf((hasFirst ? channel.firstBuffer : channel.secondBuffer) + offset, samples);
    if (hasFirst && hasSecond)
        found = united(found, extremesOf(channel.secondBuffer + offset, samples));
    return true;
}

void CMultiLayerScopeDataProvider::gather(const channel_info_t* const* channels, int offset, int samples)
{
    for (int i = 0; i < numLayers && samples > 0; ++i)
    {
        Point found;
        Point& open = openPoints[size_t(i)];
        if (extremesOf(*channels[i], offset, samples, found))
            open = sampleCounter == 0 ? adapted(*channels[i], found)
                                      : united(open, adapted(*channels[i], found));
    }
}

void CMultiLayerScopeDataProvider::update(const channel_info_t* const* channels, int samples)
{
    for (int done = 0; done < samples;)
    {
        const float wanted = samplesPerPoint();
        const int step = std::clamp(int(wanted - float(sampleCounter)), 1, samples - done);
        gather(channels, done, step);
        if (float(sampleCounter + step) >= wanted)
        {
            sampleCounter = 0;
            updatePoints();
        }
        else
            sampleCounter += step;
        done += step;
    }
}

void CMultiLayerScopeDataProvider::writePoints()
{
    for (int i = 0; i < numLayers && writeIndex < numPoints; ++i)
        rings[size_t(i)][size_t(writeIndex)] = openPoints[size_t(i)];
}

void CMultiLayerScopeDataProvider::updatePoints()
{
    const Core::Threads::SectionGuard guard(section);
    writePoints();
    writeIndex = writeIndex + 1 < numPoints ? writeIndex + 1 : 0;
}

// The window's side

bool CMultiLayerScopeDataProvider::copyFrom(int start, int layer, scope_data_point_t* target, int count) const
{
    if (layer < 0 || layer >= numLayers || target == nullptr)
        return false;
    const Points& ring = rings[size_t(layer)];
    const int points = numPoints;
    for (int i = 0; i < std::min(count, points); ++i)
        target[i] = ring[size_t((start + i) % points)];
    return true;
}

bool CMultiLayerScopeDataProvider::getScopeData(int layer, scope_data_point_t* target, int count)
{
    return copyFrom(std::min(writeIndex, numPoints - 1), layer, target, count);
}
}
