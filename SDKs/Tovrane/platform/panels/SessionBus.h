// SPDX-License-Identifier: GPL-3.0-or-later
// A private connection to a message bus, driven by the run loop. Nothing here waits for the bus, and nothing
// that comes from it is trusted: messages are bounded, and the caller checks what is in them.
#pragma once

#include "Tovrane/base/RunLoop.h"
#include "Tovrane/platform/panels/BusConnector.h"

#include <dbus/dbus.h>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Tovra
{
struct BusMessageDeleter
{
    void operator()(DBusMessage* message) const { dbus_message_unref(message); }
};
using BusMessage = std::unique_ptr<DBusMessage, BusMessageDeleter>;

// [window thread]  Where the session's bus is, empty if it has none or if finding it would start a program.
std::string sessionBusAddress();

// [window thread]  None of the callbacks may destroy the object.
class SessionBus
{
public:
    using Replied = std::function<void(DBusMessage& reply)>;

    SessionBus() = default;
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    // Every signal that arrives.
    std::function<void(DBusMessage& signal)> onSignal;
    // The connection has broken. Calls without a reply end with an error, too.
    std::function<void()> onLost;

    // Once. connected is called once, with false if there is no bus at that address; a bus that hangs makes
    // no call, so the caller bounds the time.
    void connect(const std::string& address, std::function<void(bool)> connected);
    // On this bus, as ":1.42"; once it is connected.
    const std::string& uniqueName() const { return name; }

    // replied gets the reply or the error.
    void call(const BusMessage& message, Replied replied);
    // For a message whose reply nobody needs.
    void send(const BusMessage& message);
    // Asks for the signals that fit the rule.
    void listen(const char* rule);

private:
    struct ReadWatch
    {
        DBusWatch* watch;
        std::unique_ptr<DescriptorWatch> onLoop;
    };
    struct PendingReply;

    void takeOver(DBusConnection* made);
    void greet();
    void greeted(DBusMessage& reply);
    bool addWatch(DBusWatch* watch);
    void removeWatch(DBusWatch* watch);
    void toggleWatch(DBusWatch* watch);
    void dispatch();
    void pump();
    bool hasMoreToDo() const;
    DBusHandlerResult received(DBusMessage& message);

    BusConnector connector;
    DBusConnection* connection = nullptr;
    std::string name;
    std::function<void(bool)> whenConnected;
    std::vector<ReadWatch> readWatches;
    std::vector<DBusWatch*> writeWatches;
    std::vector<DBusPendingCall*> pendingCalls;
    RepeatingTimer pumpTimer; // runs while there is something to write or to dispatch
};
}
