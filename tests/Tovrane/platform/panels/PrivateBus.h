// SPDX-License-Identifier: GPL-3.0-or-later
// A message bus of the test's own, with or without a portal on it, and the loop that everything runs in.
#pragma once

#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/platform/parts/ChildProcess.h"
#include "support/TempFolder.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

class PrivateBus : public testing::Test
{
protected:
    PrivateBus() { Tovra::RunLoop::enter(loop); }

    // Ten seconds without that are a failure; nothing else looks at the time.
    bool until(const std::function<bool()>& isSo)
    {
        using clock = std::chrono::steady_clock;
        const auto end = clock::now() + std::chrono::seconds(10);
        while (!isSo() && clock::now() < end)
            loop.runOnce(5);
        return isSo();
    }

    void startBus()
    {
        const std::string config = folder.put(
            "bus.conf", "<busconfig><type>session</type><listen>unix:dir=" + folder.path.string() +
                            "</listen><policy context=\"default\"><allow eavesdrop=\"true\"/>"
                            "<allow send_destination=\"*\"/><allow own=\"*\"/></policy></busconfig>");
        bus = std::make_unique<Tovra::ChildProcess>();
        ASSERT_TRUE(
            bus->start({"dbus-daemon", "--nofork", "--print-address", "--config-file=" + config}, {}));
        ASSERT_TRUE(until([this] { return bus->output().find('\n') != std::string::npos; }));
        address = bus->output().substr(0, bus->output().find('\n'));
    }

    void startPortal(const std::vector<std::string>& steps)
    {
        if (!bus)
            startBus();
        std::vector<std::string> words = {LODEX_STAND_IN_PORTAL, address};
        words.insert(words.end(), steps.begin(), steps.end());
        portal = std::make_unique<Tovra::ChildProcess>();
        ASSERT_TRUE(portal->start(words, {}));
        ASSERT_TRUE(until([this] { return portal->output().starts_with("ready\n"); }));
    }
    bool portalWrote(const std::string& text)
    {
        return until([&] { return portal->output().find(text) != std::string::npos; });
    }

    Tovra::PollRunLoop loop;
    TempFolder folder;
    std::string address = "unix:path=/nobody/listens/here";
    std::unique_ptr<Tovra::ChildProcess> bus;
    std::unique_ptr<Tovra::ChildProcess> portal;
};
