// The events of a window system on their way to a frame. A window calls these in its own coordinates; they
// are converted to the frame's and handed on. When the frame has gone, late events do nothing and answer
// false.
//
// Every window system has one of these for each of its frames; all of it is [window thread]. The frame is
// kept alive during a call, and may go at its end: the owner keeps itself alive by a reference of its own,
// and looks at isConnected before it goes on with the frame.
#pragma once

#include "Tovrane/base/CPoint.h"
#include "Tovrane/window/MouseEvents.h"
#include "Tovrane/window/TovraKeyCode.h"

namespace Tovra
{
class CDragContainer;
class CFrame;

class WindowEvents
{
public:
    explicit WindowEvents(CFrame* target) : frame(target) {}

    // No event reaches the frame from here on.
    void disconnect() { frame = nullptr; }
    bool isConnected() const { return frame != nullptr; }
    CFrame* getFrame() const { return frame; }

    // buttons is a mouse word: the button of the press or release, for a move all that are held, and the
    // modifiers. clicks counts those that followed each other closely, from 1; a second and every later one
    // is a double click. True while there is a frame, whether a view took the event or not.
    bool press(CPoint where, long buttons, int clicks = 1);
    bool release(CPoint where, long buttons);
    bool move(CPoint where, long buttons);
    // In notches, up and right positive. One of 0 is not sent; both make two events, X first.
    bool wheel(CPoint where, double notchesX, double notchesY, long buttons);

    // kKeyConsumed; with any other answer the key is the window's: Tab takes the focus to its next part, or
    // with shift to the one ahead, any other key goes to whoever stands behind it.
    long keyDown(const TovraKeyCode& code);
    long keyUp(const TovraKeyCode& code);

    // The content has to live from dragEnter until dragLeave or drop. drop answers whether a view took it.
    bool dragEnter(CDragContainer* content, CPoint where);
    bool dragMove(CDragContainer* content, CPoint where);
    bool dragLeave(CDragContainer* content, CPoint where);
    bool drop(CDragContainer* content, CPoint where);

private:
    template <typename Call>
    bool deliver(CPoint where, Call call);

    CFrame* frame;
};

// The bit of a button by its number: 0 left, 1 right, 2 and 3 middle, 4 and 5 the ones behind; 0 for others.
long mouseButtonBit(int number);
}
