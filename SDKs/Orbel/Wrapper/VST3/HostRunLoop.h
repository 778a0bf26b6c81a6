// SPDX-License-Identifier: GPL-3.0-or-later
// A VST 3 host's run loop as the toolkit's: it drives the timers and descriptors of the windows that this
// host shows. Made when a view is attached, and destroyed when it is removed; afterwards nothing of it is
// left with the host. [window thread]
#pragma once

#include "Tovrane/base/RunLoop.h"
#include "pluginterfaces/gui/iplugview.h"

#include <map>

namespace Orbel
{
class HostRunLoop : public Tovra::RunLoop
{
public:
    // Enters itself.
    explicit HostRunLoop(const Steinberg::IPtr<Steinberg::Linux::IRunLoop>& of);
    // Leaves. A callback in which this happens still returns.
    ~HostRunLoop() override;

    // The host's loop behind any of its objects; null if it has none.
    static Steinberg::IPtr<Steinberg::Linux::IRunLoop> find(Steinberg::FUnknown* host);

    TimerId startTimer(int milliseconds, Callback callback) override;
    void stopTimer(TimerId timer) override;
    WatchId watch(int descriptor, Callback callback) override;
    void unwatch(WatchId watched) override;

private:
    class Handler;

    const Steinberg::IPtr<Steinberg::Linux::IRunLoop> host;
    std::map<unsigned long, Steinberg::IPtr<Handler>> handlers;
    unsigned long lastId = 0;
};
}
