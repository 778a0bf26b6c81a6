// SPDX-License-Identifier: GPL-3.0-or-later
// What a scope shows: for each layer a row of points, one for each column of pixels.
#pragma once

namespace Tovra
{
class IScopeDataProvider
{
public:
    struct scope_data_point_t
    {
        float min = 0.0f;
        float max = 0.0f;

        bool operator==(const scope_data_point_t&) const = default;
    };

    virtual ~IScopeDataProvider() = default;

    // [window thread]
    virtual int getNumDataLayer() const = 0;
    // The lock under which getScopeData may be called. A reader holds it for a copy and no longer, because
    // the writer, on the audio thread, waits for it; it never waits itself, and tries again later.
    [[nodiscard]] virtual bool tryLock() = 0;
    virtual void unlock() = 0;
    virtual void lock() = 0;
    // [window thread]  Clears what was written.
    virtual void setNumDataPoints(int points) = 0;
    // [window thread]  Copies at most count points of a layer, the leftmost one first; no more than there
    // are. The caller holds the lock. False if there is no such layer.
    virtual bool getScopeData(int layer, scope_data_point_t* target, int count) = 0;
};
}
