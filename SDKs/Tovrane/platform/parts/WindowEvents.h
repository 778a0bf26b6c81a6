// SPDX-License-Identifier: GPL-3.0-or-later
// The events of a window system on their way to a frame. A window calls these in its own coordinates; they
// are converted to the frame's coordinates and passed on. When the frame has gone, late events do nothing and
// answer false.
//
// Presses and releases always come to the frame in pairs, whatever the window system reports: a release
// without a press is dropped, a second press without a release between is preceded by one, and a button that
// a move no longer lists is released first. A release that arrives while its press is still being delivered
// (a view that opened a menu in it) waits until the press has returned, because only then the frame knows
// which view took it.
//
// Every window system has one of these for each of its frames; all of it is [window thread]. The frame is
// kept alive during a call, and may go at its end: the owner keeps itself alive by a reference of its own,
// and looks at isConnected before it goes on with the frame.
#pragma once

#include "Tovrane/base/CPoint.h"
#include "Tovrane/window/MouseEvents.h"
#include "Tovrane/window/TovraKeyCode.h"

#include <functional>

namespace Tovra
{
class CDragContainer;
class CFrame;

class WindowEvents
{
public:
    explicit WindowEvents(CFrame* target) : frame(target) {}

    // No event reaches the frame from here on.
    void disconnect();
    bool isConnected() const { return frame != nullptr; }
    CFrame* getFrame() const { return frame; }

    // buttons is a mouse word: the button of the press or release, for a move all that are held, and the
    // modifiers. clicks counts those that followed each other closely, from 1; a second and every later one
    // is a double click. True while there is a frame, whether a view took the event or not.
    bool press(CPoint where, long buttons, int clicks = 1);
    bool release(CPoint where, long buttons);
    bool move(CPoint where, long buttons);
    // The window gets no more mouse events (its grab was lost, it is hidden, or it is about to close):
    // everything that is held is released where the mouse was last.
    void releaseAll() { releaseAllBut(0); }
    // As releaseAll, for those buttons that are not in the mouse word.
    void releaseAllBut(long stillHeld);
    // The mouse has left the window. Its buttons may still be held.
    bool leave(CPoint where, long modifiers);
    // The window is not visible any more: releaseAll and leave, where the mouse was last.
    void vanish();
    // The buttons whose release is still to come.
    long heldButtons() const { return held; }
    // In notches, up and right positive. A distance of 0 is not sent; two distances make two events, X first.
    bool wheel(CPoint where, double notchesX, double notchesY, long buttons);

    // With any other answer than kKeyConsumed the key is the window's: Tab moves the focus to the next part
    // of the host's window, or with shift to the previous one; every other key goes to the host.
    long keyDown(const TovraKeyCode& code);
    long keyUp(const TovraKeyCode& code);

    // Called after each event when the views have returned from it and nothing else is being delivered.
    std::function<void()> afterEvent;

    // The caller keeps the content alive from dragEnter until dragLeave or drop. drop answers whether a view
    // took it.
    bool dragEnter(CDragContainer* content, CPoint where);
    bool dragMove(CDragContainer* content, CPoint where);
    bool dragLeave(CDragContainer* content, CPoint where);
    bool drop(CDragContainer* content, CPoint where);

private:
    class Delivery;

    template <typename Call>
    bool deliver(CPoint where, Call call);
    bool deliverRelease(CPoint where, long button, long modifiers);
    void releaseEach(CPoint where, long buttons, long modifiers);

    CFrame* frame;
    long held = 0;      // buttons that are pressed
    long pressing = 0;  // whose press is being delivered
    long owed = 0;      // of these, those whose release has come in the meantime
    CPoint lastPlace;   // of the mouse
    int deliveries = 0; // that are under way, one within the other
};

// [any thread]  The bit of a button by its number: 0 left, 1 right, 2 and 3 middle, 4 and 5 the two further
// ones; 0 for all others.
long mouseButtonBit(int number);
}
