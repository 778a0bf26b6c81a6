// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/panels/SessionBus.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace Tovra
{
namespace
{
constexpr long largestMessage = 1L << 20; // bytes
constexpr long mostWaiting = 4L << 20;    // bytes of messages that are not dispatched yet
constexpr int mostAtOnce = 16;            // messages, before the run loop goes on
constexpr int pumpMilliseconds = 2;

BusMessage busCall(const char* method)
{
    return BusMessage(
        dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, method));
}
}

std::string sessionBusAddress()
{
    if (const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS"))
    {
        const std::string text = address;
        const bool startsPrograms =
            text.find("autolaunch:") != std::string::npos || text.find("unixexec:") != std::string::npos;
        return startsPrograms ? "" : text;
    }
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    char* const escaped =
        folder != nullptr ? dbus_address_escape_value((std::string(folder) + "/bus").c_str()) : nullptr;
    std::string result = escaped != nullptr ? std::string("unix:path=") + escaped : "";
    dbus_free(escaped);
    return result;
}

struct SessionBus::PendingReply
{
    SessionBus& bus;
    Replied replied;

    static void arrived(DBusPendingCall* call, void* data)
    {
        const auto& self = *static_cast<PendingReply*>(data);
        const BusMessage reply(dbus_pending_call_steal_reply(call));
        std::erase(self.bus.pendingCalls, call);
        if (reply)
            self.replied(*reply);
        dbus_pending_call_unref(call); // and with it this object
    }
    static void free(void* data) { delete static_cast<PendingReply*>(data); }
};

SessionBus::~SessionBus()
{
    for (DBusPendingCall* const call : pendingCalls)
    {
        dbus_pending_call_cancel(call);
        dbus_pending_call_unref(call);
    }
    if (connection == nullptr)
        return;
    dbus_connection_set_watch_functions(connection, nullptr, nullptr, nullptr, nullptr, nullptr);
    closeBusConnection(connection);
}

void SessionBus::connect(const std::string& address, std::function<void(bool)> connected)
{
    whenConnected = std::move(connected);
    if (address.empty())
        return whenConnected(false);
    connector.start(address, [this](DBusConnection* made) { takeOver(made); });
}

void SessionBus::takeOver(DBusConnection* made)
{
    if (made == nullptr)
        return whenConnected(false);
    connection = made;
    dbus_connection_set_exit_on_disconnect(connection, FALSE);
    dbus_connection_set_max_message_size(connection, largestMessage);
    dbus_connection_set_max_received_size(connection, mostWaiting);
    const auto receive = [](DBusConnection*, DBusMessage* message, void* self)
    { return static_cast<SessionBus*>(self)->received(*message); };
    const auto add = [](DBusWatch* watch, void* self)
    { return dbus_bool_t(static_cast<SessionBus*>(self)->addWatch(watch)); };
    const auto remove = [](DBusWatch* watch, void* self)
    { static_cast<SessionBus*>(self)->removeWatch(watch); };
    const auto toggle = [](DBusWatch* watch, void* self)
    { static_cast<SessionBus*>(self)->toggleWatch(watch); };
    if (!dbus_connection_add_filter(connection, receive, this, nullptr) ||
        !dbus_connection_set_watch_functions(connection, add, remove, toggle, this, nullptr))
        return whenConnected(false);
    greet();
}

// The first call on every connection, which the library would make in a way that waits.
void SessionBus::greet()
{
    call(busCall("Hello"), [this](DBusMessage& reply) { greeted(reply); });
}

void SessionBus::greeted(DBusMessage& reply)
{
    const char* given = nullptr;
    const bool isNamed =
        dbus_message_get_args(&reply, nullptr, DBUS_TYPE_STRING, &given, DBUS_TYPE_INVALID) &&
        dbus_message_get_type(&reply) == DBUS_MESSAGE_TYPE_METHOD_RETURN;
    name = isNamed ? given : "";
    whenConnected(isNamed);
}

void SessionBus::call(const BusMessage& message, Replied replied)
{
    DBusPendingCall* pending = nullptr;
    dbus_connection_send_with_reply(connection, message.get(), &pending, DBUS_TIMEOUT_INFINITE);
    if (pending == nullptr)
    {
        const BusMessage error(dbus_message_new(DBUS_MESSAGE_TYPE_ERROR));
        return replied(*error);
    }
    pendingCalls.push_back(pending);
    dbus_pending_call_set_notify(pending, &PendingReply::arrived, new PendingReply{*this, std::move(replied)},
                                 &PendingReply::free);
}

void SessionBus::send(const BusMessage& message)
{
    dbus_message_set_no_reply(message.get(), TRUE);
    dbus_connection_send(connection, message.get(), nullptr);
}

void SessionBus::listen(const char* rule)
{
    const BusMessage message = busCall("AddMatch");
    dbus_message_append_args(message.get(), DBUS_TYPE_STRING, &rule, DBUS_TYPE_INVALID);
    send(message);
}

DBusHandlerResult SessionBus::received(DBusMessage& message)
{
    if (dbus_message_get_type(&message) != DBUS_MESSAGE_TYPE_SIGNAL)
        return DBUS_HANDLER_RESULT_NOT_YET_HANDLED;
    if (!dbus_message_is_signal(&message, DBUS_INTERFACE_LOCAL, "Disconnected"))
        onSignal(message);
    else if (name.empty())
        whenConnected(false);
    else
        onLost();
    return DBUS_HANDLER_RESULT_HANDLED;
}

// The run loop watches descriptors that can be read. To write, the pump tries again and again: the messages
// are small, and usually gone at once.

bool SessionBus::addWatch(DBusWatch* watch)
{
    if ((dbus_watch_get_flags(watch) & DBUS_WATCH_READABLE) != 0)
        readWatches.push_back({watch, std::make_unique<DescriptorWatch>()});
    if ((dbus_watch_get_flags(watch) & DBUS_WATCH_WRITABLE) != 0)
        writeWatches.push_back(watch);
    toggleWatch(watch);
    return true;
}

void SessionBus::removeWatch(DBusWatch* watch)
{
    std::erase_if(readWatches, [=](const ReadWatch& each) { return each.watch == watch; });
    std::erase(writeWatches, watch);
}

void SessionBus::toggleWatch(DBusWatch* watch)
{
    for (ReadWatch& each : readWatches)
        if (each.watch == watch && dbus_watch_get_enabled(watch))
            each.onLoop->start(dbus_watch_get_unix_fd(watch),
                               [this, watch]
                               {
                                   dbus_watch_handle(watch, DBUS_WATCH_READABLE);
                                   dispatch();
                               });
        else if (each.watch == watch)
            each.onLoop->stop();
    pump();
}

void SessionBus::dispatch()
{
    for (int i = 0;
         i < mostAtOnce && dbus_connection_get_dispatch_status(connection) == DBUS_DISPATCH_DATA_REMAINS; ++i)
        dbus_connection_dispatch(connection);
    pump();
}

bool SessionBus::hasMoreToDo() const
{
    return dbus_connection_get_dispatch_status(connection) == DBUS_DISPATCH_DATA_REMAINS ||
           std::any_of(writeWatches.begin(), writeWatches.end(), dbus_watch_get_enabled);
}

void SessionBus::pump()
{
    if (pumpTimer.isStarted())
        return;
    pumpTimer.start(pumpMilliseconds,
                    [this]
                    {
                        const auto writers = writeWatches; // each may go
                        for (DBusWatch* const watch : writers)
                            if (std::count(writeWatches.begin(), writeWatches.end(), watch) != 0 &&
                                dbus_watch_get_enabled(watch))
                                dbus_watch_handle(watch, DBUS_WATCH_WRITABLE);
                        dispatch();
                        if (!hasMoreToDo())
                            pumpTimer.stop();
                    });
}
}
