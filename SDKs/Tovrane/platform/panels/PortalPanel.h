// SPDX-License-Identifier: GPL-3.0-or-later
// The file panel of the desktop portal (org.freedesktop.portal.FileChooser on the session's bus).
//
// The panel counts as shown from the moment when the portal has named a request for it. Whatever goes wrong
// before that (no bus, no portal, an error, no answer within five seconds) makes this way unavailable; what
// goes wrong afterwards cancels the panel. Only signals of the very program that answered the call count.
#pragma once

#include "Tovrane/platform/panels/PanelWay.h"
#include "Tovrane/platform/panels/SessionBus.h"

namespace Tovra
{
// [window thread]
class PortalPanel : public PanelWay
{
public:
    explicit PortalPanel(std::string busAddress) : address(std::move(busAddress)) {}
    // Asks the portal to close what it shows.
    ~PortalPanel() override;
    void open(const FileSelectorOptions& asked, std::uint32_t overWindow, Ended ended) override;

    bool isShown() const { return !handle.empty(); }

    static constexpr int longestWait = 5000; // milliseconds, until the panel is shown

private:
    void connected(bool isConnected);
    void versionArrived(DBusMessage& reply);
    void handleArrived(DBusMessage& reply);
    void signalArrived(DBusMessage& signal);
    bool isResponse(DBusMessage& signal) const;
    bool tellsThatThePortalHasGone(DBusMessage& signal) const;
    void lost();
    void end(End how, const std::vector<std::string>& paths = {});

    const std::string address;
    FileSelectorOptions options;
    std::uint32_t window = 0;
    Ended whenEnded;      // empty once it was called
    std::string owner;    // the portal's unique name, once it has answered
    std::string expected; // where the request should be
    std::string handle;   // where it is; empty until the panel is shown
    RepeatingTimer limit;
    SessionBus bus;
};
}
