// SPDX-License-Identifier: GPL-3.0-or-later
// Connects to a message bus without holding the window thread: connecting is the one thing that the bus's
// library does in a single call, and a bus that hangs can hold it for ever.
//
// So a worker connects, and the run loop is woken when it has. Whoever destroys this does not wait for the
// worker: what it uses is its own, and the code that it runs is kept loaded.
#pragma once

#include "Tovrane/base/RunLoop.h"

#include <functional>
#include <memory>
#include <string>
#include <thread>

struct DBusConnection;

namespace Tovra
{
// [window thread]
class BusConnector
{
public:
    // Takes over the private connection; null if there is none.
    using Connected = std::function<void(DBusConnection*)>;

    BusConnector() = default;
    ~BusConnector();
    BusConnector(const BusConnector&) = delete;
    BusConnector& operator=(const BusConnector&) = delete;

    // Once. connected is called by the run loop, or within this call if no thread can be started.
    void start(const std::string& address, Connected connected);

private:
    struct Attempt;
    void finish();

    std::shared_ptr<Attempt> attempt;
    std::thread worker;
    DescriptorWatch watch;
    Connected whenConnected;
};

// [any thread]  Closes a private connection and lets go of it; null is allowed.
void closeBusConnection(DBusConnection* connection);
}
