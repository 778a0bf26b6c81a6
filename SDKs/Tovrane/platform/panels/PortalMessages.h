// SPDX-License-Identifier: GPL-3.0-or-later
// What is said to the desktop portal's file chooser, and what it answers.
#pragma once

#include "Tovrane/platform/panels/SessionBus.h"
#include "Tovrane/window/IFileSelector.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Tovra
{
inline constexpr char portalName[] = "org.freedesktop.portal.Desktop";
inline constexpr char portalRequestInterface[] = "org.freedesktop.portal.Request";

// [any thread]  The question for the version of the file chooser, and its answer: nothing if it is none.
BusMessage portalVersionCall();
std::optional<std::uint32_t> portalVersion(DBusMessage& reply);
// The first version that can choose folders.
inline constexpr std::uint32_t firstVersionWithFolders = 3;

// [any thread]  The call that shows the panel over the X11 window of that number, 0 for none. token is the
// last part of the request's path.
BusMessage portalCall(const FileSelectorOptions& options, std::uint32_t window, const char* token);
// Where the request will be, for the caller of that unique name.
std::string portalRequestPath(const std::string& uniqueName, const char* token);

// [any thread]  The path of the request in the reply to portalCall; nothing if it is an error.
std::optional<std::string> portalHandle(DBusMessage& reply);
BusMessage portalCloseCall(const std::string& handle);

struct PortalResponse
{
    bool isChosen = false;
    std::vector<std::string> paths; // of local files, in UTF-8
};
// [any thread]  What a Response signal says; one that is not what it should be chooses nothing.
PortalResponse portalResponse(DBusMessage& signal);
}
