// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/panels/PortalPanel.h"

#include "Tovrane/platform/panels/PortalMessages.h"

#include <utility>

namespace Tovra
{
namespace
{
constexpr char token[] = "tovrane_panel"; // each panel has a connection of its own, so it need not vary

constexpr char ruleForResponse[] = "type='signal',sender='org.freedesktop.portal.Desktop',"
                                   "interface='org.freedesktop.portal.Request',member='Response'";
constexpr char ruleForOwner[] = "type='signal',sender='org.freedesktop.DBus',"
                                "interface='org.freedesktop.DBus',member='NameOwnerChanged',"
                                "arg0='org.freedesktop.portal.Desktop'";

std::string senderOf(DBusMessage& message)
{
    const char* const sender = dbus_message_get_sender(&message);
    return sender != nullptr ? sender : "";
}
}

PortalPanel::~PortalPanel()
{
    if (whenEnded && isShown())
        bus.send(portalCloseCall(handle));
}

void PortalPanel::open(const FileSelectorOptions& asked, std::uint32_t overWindow, Ended ended)
{
    options = asked;
    window = overWindow;
    whenEnded = std::move(ended);
    bus.onSignal = [this](DBusMessage& signal) { signalArrived(signal); };
    bus.onLost = [this] { lost(); };
    limit.start(longestWait, [this] { lost(); });
    bus.connect(address, [this](bool isConnected) { connected(isConnected); });
}

void PortalPanel::connected(bool isConnected)
{
    if (!isConnected)
        return end(End::unavailable);
    bus.listen(ruleForOwner);
    bus.listen(ruleForResponse);
    bus.call(portalVersionCall(), [this](DBusMessage& reply) { versionArrived(reply); });
}

void PortalPanel::versionArrived(DBusMessage& reply)
{
    const auto version = portalVersion(reply);
    const bool mayDo = version && (options.purpose != FileSelectorOptions::openFolder ||
                                   *version >= firstVersionWithFolders);
    if (!mayDo)
        return end(End::unavailable);
    owner = senderOf(reply);
    expected = portalRequestPath(bus.uniqueName(), token);
    bus.call(portalCall(options, window, token), [this](DBusMessage& answer) { handleArrived(answer); });
}

void PortalPanel::handleArrived(DBusMessage& reply)
{
    const auto given = portalHandle(reply);
    if (!given || senderOf(reply) != owner)
        return end(End::unavailable);
    handle = *given;
    limit.stop();
}

void PortalPanel::signalArrived(DBusMessage& signal)
{
    if (tellsThatThePortalHasGone(signal))
        return lost();
    if (!isResponse(signal))
        return;
    const PortalResponse response = portalResponse(signal);
    end(response.isChosen ? End::chosen : End::cancelled, response.paths);
}

// It may come before the reply with the handle.
bool PortalPanel::isResponse(DBusMessage& signal) const
{
    const char* const path = dbus_message_get_path(&signal);
    const bool isOurs = path != nullptr && !expected.empty() && (path == expected || path == handle);
    return isOurs && senderOf(signal) == owner &&
           dbus_message_is_signal(&signal, portalRequestInterface, "Response");
}

bool PortalPanel::tellsThatThePortalHasGone(DBusMessage& signal) const
{
    const char* name = nullptr;
    const char* before = nullptr;
    const char* after = nullptr;
    return !owner.empty() && senderOf(signal) == DBUS_SERVICE_DBUS &&
           dbus_message_is_signal(&signal, DBUS_INTERFACE_DBUS, "NameOwnerChanged") &&
           dbus_message_get_args(&signal, nullptr, DBUS_TYPE_STRING, &name, DBUS_TYPE_STRING, &before,
                                 DBUS_TYPE_STRING, &after, DBUS_TYPE_INVALID) &&
           name == std::string(portalName) && after != owner;
}

void PortalPanel::lost()
{
    end(isShown() ? End::cancelled : End::unavailable);
}

void PortalPanel::end(End how, const std::vector<std::string>& paths)
{
    limit.stop();
    if (const auto call = std::exchange(whenEnded, nullptr))
        call(how, paths);
}
}
