// SPDX-License-Identifier: GPL-3.0-or-later
// The frame of a VST 3 host's window with the host's run loop: it writes down what it is asked for, and calls
// back on a loop where it has one.
#pragma once

#include "Tovrane/base/RunLoop.h"
#include "pluginterfaces/gui/iplugview.h"

#include <algorithm>
#include <string>
#include <vector>

struct VST3HostFrame : Steinberg::IPlugFrame, Steinberg::Linux::IRunLoop
{
    using tresult = Steinberg::tresult;
    using Timer = Steinberg::Linux::ITimerHandler;
    using Input = Steinberg::Linux::IEventHandler;

    explicit VST3HostFrame(Tovra::RunLoop* runs = nullptr) : loop(runs) {}

    tresult PLUGIN_API resizeView(Steinberg::IPlugView* view, Steinberg::ViewRect* size) override
    {
        log += std::to_string(size->getWidth()) + "x" + std::to_string(size->getHeight()) + ";";
        return view->onSize(size);
    }
    tresult PLUGIN_API registerTimer(Timer* handler, Steinberg::Linux::TimerInterval period) override
    {
        log += "timer " + std::to_string(period) + ";";
        const auto call = [handler] { handler->onTimer(); };
        timers.push_back({handler, loop ? loop->startTimer(int(period), call) : 0});
        return Steinberg::kResultTrue;
    }
    tresult PLUGIN_API unregisterTimer(Timer* handler) override
    {
        return drop(timers, handler, [this](auto id) { loop->stopTimer(id); });
    }
    tresult PLUGIN_API registerEventHandler(Input* handler, Steinberg::Linux::FileDescriptor fd) override
    {
        log += "descriptor " + std::to_string(fd) + ";";
        const auto call = [handler, fd] { handler->onFDIsSet(fd); };
        inputs.push_back({handler, loop ? loop->watch(fd, call) : 0});
        return Steinberg::kResultTrue;
    }
    tresult PLUGIN_API unregisterEventHandler(Input* handler) override
    {
        return drop(inputs, handler, [this](auto id) { loop->unwatch(id); });
    }
    tresult PLUGIN_API queryInterface(const Steinberg::TUID id, void** object) override
    {
        QUERY_INTERFACE(id, object, Steinberg::IPlugFrame::iid, IPlugFrame)
        QUERY_INTERFACE(id, object, Steinberg::Linux::IRunLoop::iid, IRunLoop)
        return Steinberg::kNoInterface;
    }
    // Lives on a test's stack.
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }

    bool isIdle() const { return timers.empty() && inputs.empty(); }

    template <typename Handler>
    struct Registered
    {
        Handler* handler;
        unsigned long id; // on loop
    };
    std::vector<Registered<Timer>> timers;
    std::vector<Registered<Input>> inputs;
    std::string log;

private:
    template <typename Handler, typename Stop>
    tresult drop(std::vector<Registered<Handler>>& from, Handler* handler, Stop stop)
    {
        const auto found = std::find_if(from.begin(), from.end(),
                                        [handler](const auto& each) { return each.handler == handler; });
        if (found == from.end())
            return Steinberg::kResultFalse;
        if (loop)
            stop(found->id);
        from.erase(found);
        return Steinberg::kResultTrue;
    }

    Tovra::RunLoop* const loop;
};
