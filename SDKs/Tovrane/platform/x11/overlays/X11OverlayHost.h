// SPDX-License-Identifier: GPL-3.0-or-later
// What a menu, a text field or a file panel needs of the frame that it lies over. X11Frame implements it.
//
// An overlay keeps a reference to it. Once the frame is closed or its window has gone, isOpen is false, and
// the other calls do nothing.
#pragma once

#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/parts/FrameOverlays.h"
#include "Tovrane/platform/x11/exchange/X11Clipboard.h"

#include <memory>

namespace Tovra
{
class CFrame;

// [window thread]
class X11OverlayHost
{
public:
    virtual void remember() = 0;
    virtual void forget() = 0;

    // Where overlays register. It is shut when the host is not open any more.
    virtual FrameOverlays& overlays() = 0;
    virtual bool isOpen() const = 0;
    // Null once the frame is being closed.
    virtual CFrame* getFrame() const = 0;

    virtual const std::shared_ptr<X11Connection>& sharedConnection() const = 0;
    virtual xcb_window_t windowId() const = 0;
    virtual X11Clipboard& clipboard() = 0;
    // Pixels of the window to one unit of the frame's coordinates.
    virtual double scale() const = 0;
    // From the frame's coordinates to the screen's.
    virtual CPoint toScreen(CPoint point) const = 0;

    // Asks for the keyboard's focus, for the frame's window.
    virtual void takeFocus() = 0;
    // A field has the keyboard, with its caret at this place of the frame's window, in pixels.
    virtual void typeAt(int x, int y) = 0;
    // No field has it any more.
    virtual void typingEnded() = 0;
    // A key that came to the window of an overlay instead of the frame's.
    virtual void handleKey(std::uint8_t type, const xcb_generic_event_t& event) = 0;
    // An overlay took the press of this key: its release goes to nobody.
    virtual void swallowKey(std::uint8_t key) = 0;
    // A menu takes the mouse: views that hold it get their releases.
    virtual void mouseTaken() = 0;
    // The menu has closed, and the frame looks where the mouse is and what it holds.
    virtual void mouseGivenBack() = 0;

protected:
    ~X11OverlayHost() = default;
};
}
