// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/Wrapper/VST3/HostRunLoop.h"

#include "base/source/fobject.h"

#include <algorithm>
#include <utility>

namespace Orbel
{
using namespace Steinberg;

// What the host calls. It may hold it, and call it, for longer than it was asked to.
class HostRunLoop::Handler : public FObject, public Linux::ITimerHandler, public Linux::IEventHandler
{
public:
    explicit Handler(Callback called) : callback(std::move(called)) {}

    void stop() { stopped = true; }

    void PLUGIN_API onTimer() override { call(); }
    void PLUGIN_API onFDIsSet(Linux::FileDescriptor) override { call(); }

    DEFINE_INTERFACES
    DEF_INTERFACE(Linux::ITimerHandler)
    DEF_INTERFACE(Linux::IEventHandler)
    END_DEFINE_INTERFACES(FObject)
    REFCOUNT_METHODS(FObject)

private:
    void call()
    {
        const IPtr<Handler> self(this);
        if (!stopped)
            callback();
    }

    const Callback callback;
    bool stopped = false;
};

HostRunLoop::HostRunLoop(const IPtr<Linux::IRunLoop>& of) : host(of)
{
    enter(*this);
}

HostRunLoop::~HostRunLoop()
{
    leave(*this);
}

IPtr<Linux::IRunLoop> HostRunLoop::find(FUnknown* host)
{
    return FUnknownPtr<Linux::IRunLoop>(host);
}

HostRunLoop::TimerId HostRunLoop::startTimer(int milliseconds, Callback callback)
{
    const auto handler = owned(new Handler(std::move(callback)));
    if (host->registerTimer(handler, Linux::TimerInterval(std::max(milliseconds, 1))) != kResultTrue)
        return 0;
    handlers[++lastId] = handler;
    return lastId;
}

void HostRunLoop::stopTimer(TimerId timer)
{
    const auto found = handlers.extract(timer);
    if (!found)
        return;
    found.mapped()->stop();
    host->unregisterTimer(found.mapped());
}

HostRunLoop::WatchId HostRunLoop::watch(int descriptor, Callback callback)
{
    const auto handler = owned(new Handler(std::move(callback)));
    if (descriptor < 0 || host->registerEventHandler(handler, descriptor) != kResultTrue)
        return 0;
    handlers[++lastId] = handler;
    return lastId;
}

void HostRunLoop::unwatch(WatchId watched)
{
    const auto found = handlers.extract(watched);
    if (!found)
        return;
    found.mapped()->stop();
    host->unregisterEventHandler(found.mapped());
}
}
