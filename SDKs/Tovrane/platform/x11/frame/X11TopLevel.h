// SPDX-License-Identifier: GPL-3.0-or-later
// A window on the desktop for a frame without a host: for tools. The frame is made with parent() and lies in
// it like in a host's window.
#pragma once

#include "Tovrane/platform/x11/connection/X11Window.h"

#include <functional>
#include <memory>
#include <string>

namespace Tovra
{
// [window thread]
class X11TopLevel : private X11EventSink
{
public:
    // Null without a display. The title is UTF-8. The user can't change the size.
    static std::unique_ptr<X11TopLevel> open(const std::string& title, int width, int height);

    // For the constructor of CFrame.
    void* parent() const;
    void setSize(int width, int height);
    // False once the window or the server has gone.
    bool isOpen() const { return !window.isGone() && window.connection().isAlive(); }

    // The user wants it closed; the window stays until this object goes. May destroy this object.
    std::function<void()> onClose;

private:
    X11TopLevel(std::shared_ptr<X11Connection> server, const std::string& title, int width, int height);
    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    void fixSize(int width, int height);

    X11Window window;
};
}
