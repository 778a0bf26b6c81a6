// SPDX-License-Identifier: GPL-3.0-or-later
// The pop-up menu: a stack of open panels, and what the mouse and keys do to it.
//
// While it is open it takes the mouse and the keyboard for itself, and runs the toolkit's timers and its own
// connection's events on a run loop of its own; the host's loop stands still. It closes without a choice when
// the user clicks beside it or presses Escape; when the mouse or the keyboard cannot be had, or are lost (a
// panel is hidden or covered by another window, a click comes to the frame); and when its frame or the
// frame's window goes away.
#pragma once

#include "Tovrane/base/Kept.h"
#include "Tovrane/platform/x11/X11Frame.h"
#include "Tovrane/platform/x11/X11MenuPanel.h"
#include "Tovrane/window/IOptionMenu.h"

#include <memory>
#include <vector>

namespace Tovra
{
// [window thread]
class X11OptionMenu : public IOptionMenu, private X11EventSink
{
public:
    explicit X11OptionMenu(X11Frame& frame) : owner(&frame) {}

    MenuChoice openMenu(IMenu& menu) override;

    // Closes it without a choice.
    void cancel()
    {
        choice = {};
        isDone = true;
    }
    // Also for a key that came to the frame's window.
    void keyPressed(const TovraKeyCode& code);

protected:
    ~X11OptionMenu() override = default;

private:
    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    X11EventSink& sink() { return *this; }
    void notePointer();
    bool takeInput();
    void run();
    void tick();

    void moved(int x, int y);
    void pressed(int button, int x, int y);
    void released(int button, int x, int y);
    void stepTo(int row);
    void hover(std::size_t level, int row);

    int levelAt(int x, int y) const; // -1 for none
    X11MenuPanel& deepest() { return *panels.back(); }
    void openBelow(std::size_t level);
    void closeBelow(std::size_t level);
    void choose(std::size_t level);

    const Kept<X11Frame> owner;
    std::shared_ptr<X11Connection> server;
    double scale = 1.0;
    std::vector<std::unique_ptr<X11MenuPanel>> panels;
    MenuChoice choice;
    bool isDone = true;
    bool wasPressed = false; // since it opened: the click that opened it may still be held
    bool hasMoved = false;
    int openedX = 0, openedY = 0;
    int mouseX = 0, mouseY = 0;
    // After these ticks the submenu of this level's marked row opens, and another row's closes. 0: nothing
    // waits.
    int waitingTicks = 0;
    std::size_t waitingLevel = 0;
};
}
