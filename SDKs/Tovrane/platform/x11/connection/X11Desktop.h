// SPDX-License-Identifier: GPL-3.0-or-later
// What the user's desktop says on the root window: how large and of what kind the screen's pixels are, and
// which window is the active one.
#pragma once

#include "Tovrane/draw/SubpixelOrder.h"
#include "Tovrane/platform/x11/connection/X11Event.h"

#include <functional>
#include <string>

namespace Tovra
{
class X11Connection;

// What the X resources say about the screen.
struct ScreenSettings
{
    double scale = 1.0; // Xft.dpi / 96: pixels to a unit, 0.75 to 4; 1 without a usable number
    SubpixelOrder order = kSubpixelRGB; // Xft.rgba

    bool operator==(const ScreenSettings&) const = default;
};

// [any thread]  resources is a text of lines "name: value", as the property RESOURCE_MANAGER has it. Anybody
// can write it: lines that would have other files read are left out, and more than 1 MiB counts as empty.
ScreenSettings screenSettingsOf(const std::string& resources);

// [window thread]
class X11Desktop : private X11EventSink
{
public:
    // The connection owns it and outlives it.
    explicit X11Desktop(X11Connection& on);
    ~X11Desktop() override;

    const ScreenSettings& settings() const { return current; }
    // Whether the window lies in the one that the window manager calls active. True if it names none.
    bool isActive(xcb_window_t window) const;

    // The settings are other ones now.
    std::function<void()> onSettings;
    // The window manager made another window active.
    std::function<void()> onActiveWindow;

private:
    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    std::string resources() const;
    xcb_window_t activeWindow() const;

    X11Connection& server;
    ScreenSettings current;
};
}
