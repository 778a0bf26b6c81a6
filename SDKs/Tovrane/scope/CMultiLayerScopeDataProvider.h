// SPDX-License-Identifier: GPL-3.0-or-later
// Reduces what the audio thread plays to the points of a scope: one minimum and one maximum for each slice of
// time, in a ring for each layer.
//
// Rings of another length are made on the window thread, handed over under the lock, and freed there as well;
// the audio thread neither allocates nor frees. It takes the lock once a point, for a few stores.
#pragma once

#include "CORE/CriticalSection.h"
#include "CORE/Relaxed.h"
#include "Tovrane/scope/IScopeDataProvider.h"

#include <array>
#include <vector>

namespace Tovra
{
class CMultiLayerScopeDataProvider : public IScopeDataProvider
{
public:
    static constexpr int maximumLayers = 10;

    // The audio of one layer in a block. The buffers hold at least as many samples as update is given.
    struct channel_info_t
    {
        enum Kind : int
        {
            oneBuffer = 1,
            twoBuffers = 2
        };
        enum Selection : int // of two buffers; any other number is both
        {
            first = 1,
            second = 2,
            both = 4
        };
        int kind = oneBuffer;
        int selection = both;
        const float* firstBuffer = nullptr;
        const float* secondBuffer = nullptr;
    };

    CMultiLayerScopeDataProvider() = default;
    CMultiLayerScopeDataProvider(const CMultiLayerScopeDataProvider&) = delete;
    CMultiLayerScopeDataProvider& operator=(const CMultiLayerScopeDataProvider&) = delete;

    // [window thread]  At most ten layers; their rings are empty.
    virtual void initialize(int layers);
    void setNumDataPoints(int points) override;
    int getNumDataLayer() const override { return numLayers; }
    int getNumDataPoints() const { return numPoints; }

    // [any thread]  The time from the left edge to the right one, in milliseconds.
    virtual void setVisibleTime(float milliseconds) { visibleTime = milliseconds; }
    // [any thread]  In hertz.
    virtual void setSampleRate(float hertz) { sampleRate = hertz; }
    // [any thread]  1 at least.
    float samplesPerPoint() const;

    // [audio stopped]  The next point is the first of the ring. What was written stays.
    virtual void reset();
    // [audio thread]  One channel_info_t for each layer.
    virtual void update(const channel_info_t* const* channels, int samples);

    [[nodiscard]] bool tryLock() override { return section.tryEnter(); }
    void unlock() override { section.leave(); }
    void lock() override { section.enter(); }
    // In order of time: the oldest point first.
    bool getScopeData(int layer, scope_data_point_t* target, int count) override;

protected:
    using Points = std::vector<scope_data_point_t>;

    // [audio thread]  Widens the open point of each layer by samples of the block from offset on.
    void gather(const channel_info_t* const* channels, int offset, int samples);
    // [audio thread]  The extremes of a layer as they are to be shown.
    virtual scope_data_point_t adapted(const channel_info_t&, const scope_data_point_t& found) const
    {
        return found;
    }
    // [audio thread]  The open points are complete: writes them.
    virtual void updatePoints();
    // Under the lock.
    void writePoints();
    bool copyFrom(int start, int layer, scope_data_point_t* target, int count) const;
    // [window thread]  Zeroes everything that was written.
    void clearPoints();

    Core::Threads::CriticalSection section;
    Core::Relaxed<int> numPoints = 200; // of a ring
    int writeIndex = 0;                 // of the next point; guarded by the lock
    int sampleCounter = 0;              // [audio thread] of the open points
    Core::Relaxed<int> numLayers = 0;

private:
    void handOver(int layers, int points);

    std::array<Points, maximumLayers> rings;                    // guarded by the lock
    std::array<scope_data_point_t, maximumLayers> openPoints{}; // [audio thread]
    Core::Relaxed<float> visibleTime = 200.0f;
    Core::Relaxed<float> sampleRate = 44100.0f;
};
}
