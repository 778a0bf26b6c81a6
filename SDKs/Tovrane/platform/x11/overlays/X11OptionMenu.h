// SPDX-License-Identifier: GPL-3.0-or-later
// The pop-up menu: a stack of open panels, and what the mouse and keys do to it.
//
// While it is open it has the mouse and the keyboard of the whole screen. It closes without a choice when the
// user clicks beside it or presses Escape; when the mouse or the keyboard cannot be had, or are lost (a panel
// is hidden or covered by another window, a click comes to the frame, another window gets the focus); and
// when its frame or the frame's window goes away.
#pragma once

#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/x11/overlays/X11MenuPanel.h"
#include "Tovrane/platform/x11/overlays/X11OverlayHost.h"
#include "Tovrane/window/IOptionMenu.h"

#include <memory>
#include <vector>

namespace Tovra
{
// [window thread]
class X11OptionMenu : public IOptionMenu, private X11EventSink, private FrameOverlay
{
public:
    explicit X11OptionMenu(X11OverlayHost& frame) : owner(&frame) {}

    void openMenu(IMenu& menu, Done done) override;
    // Closes it without a choice. Nothing happens if it is not open.
    void cancel() { finish({}); }

protected:
    ~X11OptionMenu() override = default;

private:
    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    X11EventSink& sink() { return *this; }
    void overlayLost() override { finish({}); }
    long overlayKeyDown(const TovraKeyCode& code, const std::string& typed) override;
    bool show(IMenu& menu);
    void notePointer();
    void takeInputSoon();
    bool takeInput();
    void tick();
    void finish(const MenuChoice& choice);

    void moved(int x, int y);
    void pressed(int button, int x, int y);
    void released(int button, int x, int y);
    void keyPressed(const TovraKeyCode& code);
    void stepTo(int row);
    void hover(std::size_t level, int row);

    int levelAt(int x, int y) const; // -1 for none
    X11MenuPanel& deepest() { return *panels.back(); }
    void openBelow(std::size_t level);
    void closeBelow(std::size_t level);
    void choose(std::size_t level);

    const Kept<X11OverlayHost> owner;
    std::shared_ptr<X11Connection> server;
    double scale = 1.0;
    OverlayHandle handle;
    Done done;                // null while it is closed
    Kept<CBaseObject> shown;  // the menu, while it is open
    Kept<X11OptionMenu> self; // the same
    std::vector<std::unique_ptr<X11MenuPanel>> panels;
    RepeatingTimer ticker;
    RepeatingTimer grabber;
    int grabs = 0;           // tried
    bool wasPressed = false; // since it opened: the click that opened it may still be held
    bool hasMoved = false;
    int openedX = 0, openedY = 0;
    int mouseX = 0, mouseY = 0;
    // The ticks until the submenu of the marked row on waitingLevel opens, and that of another row closes; 0
    // if nothing is waiting.
    int waitingTicks = 0;
    std::size_t waitingLevel = 0;
};
}
