// SPDX-License-Identifier: GPL-3.0-or-later
// A message's life in its frame, and what the user does with it.
#include "Tovrane/views/controls/CMessageView.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/IFrame.h"

#include <utility>

namespace Tovra
{
CMessageView::CMessageView(const CRect& rect, Message shown, Sonvex::MessageBoxDone done)
    : CView(rect),
      message(std::move(shown)),
      answerOnce(std::move(done), 0),
      buttons{
          {{message.type == Sonvex::kMessageBoxOk ? "OK" : "No", message.type == Sonvex::kMessageBoxOk, {}},
           {"Yes", 1, {}}}}
{
    setWantsFocus(true);
}

bool CMessageView::open(CFrame& frame, const Message& message, const Sonvex::MessageBoxDone& done)
{
    const Kept<CFrame> self(&frame);
    frame.getOSFrame()->releaseMouse();
    CPoint where = frame.getLastMousePosition();
    frame.onMouseExited(where, 0); // what lies below must not look as if the mouse were on it
    if (frame.getModalView() != nullptr)
        return false;
    const CRect& whole = frame.getViewSize();
    const CRect rect(0.0, 0.0, whole.getWidth(), whole.getHeight());
    const auto view = Kept<CMessageView>::adopt(new CMessageView(rect, message, done));
    view->focusedBefore.reset(frame.getFocusView());
    view->remember(); // the frame's reference
    frame.adoptModalView(view.get());
    frame.setFocusView(view.get());
    return true;
}

void CMessageView::answer(int given)
{
    const Kept<CMessageView> self(this);
    if (!answerOnce.isGiven())
        leaveFrame();
    answerOnce.give(given);
}

// Nothing for a view that merely shows what a message looks like.
void CMessageView::leaveFrame()
{
    const Kept<CFrame> on(getFrame());
    if (!on || on->getModalView() != this)
        return;
    const Kept<CView> before = focusedBefore;
    isLeaving = true;
    on->setModalView(nullptr);
    if (before && before->getFrame() == on.get() && before->isAttached())
        on->setFocusView(before.get());
}

bool CMessageView::attached(CView* parent)
{
    const bool isNew = CView::attached(parent);
    layOut();
    return isNew;
}

bool CMessageView::removed(CView* parent)
{
    const Kept<CMessageView> self(this);
    const bool wasAttached = CView::removed(parent);
    focusedBefore.reset();
    if (!isLeaving)
        answerOnce.give(0);
    return wasAttached;
}

// As the frame's modal view it covers the frame.
void CMessageView::parentSizeChanged()
{
    if (getFrame() == nullptr || getFrame()->getModalView() != this)
        return;
    const CRect& whole = getFrame()->getViewSize();
    setViewSize(CRect(0.0, 0.0, whole.getWidth(), whole.getHeight()));
}

void CMessageView::setViewSize(const CRect& rect, bool invalidate)
{
    CView::setViewSize(rect, invalidate);
    setMouseableArea(rect);
    layOut();
}

// The mouse

int CMessageView::buttonAt(const CPoint& where) const
{
    for (int i = 0; i < buttonCount(); ++i)
        if (buttonRect(i).pointInside(where))
            return i;
    return -1;
}

void CMessageView::setHovered(int button)
{
    if (button == hovered)
        return;
    hovered = button;
    setDirty(true);
}

MouseEventResult CMessageView::onMouseDown(CPoint& where, const long& mouse)
{
    pressed = (mouse & kButtonLeft) != 0 ? buttonAt(where) : -1;
    hovered = buttonAt(where);
    if (pressed >= 0)
        focused = pressed;
    setDirty(true);
    return kMouseHandled;
}

MouseEventResult CMessageView::onMouseMoved(CPoint& where, const long&)
{
    setHovered(buttonAt(where));
    return kMouseHandled;
}

MouseEventResult CMessageView::onMouseUp(CPoint& where, const long&)
{
    const int clicked = std::exchange(pressed, -1);
    setDirty(true);
    if (clicked >= 0 && buttonAt(where) == clicked)
        answer(buttons[std::size_t(clicked)].answer);
    return kMouseHandled;
}

MouseEventResult CMessageView::onMouseExited(CPoint&, const long&)
{
    setHovered(-1);
    return kMouseHandled;
}

// The keyboard

void CMessageView::moveFocus(int step)
{
    focused = (focused + step + buttonCount()) % buttonCount();
    setDirty(true);
}

long CMessageView::onKeyDown(TovraKeyCode& code)
{
    switch (code.virtualKey)
    {
    case kVirtualReturn:
    case kVirtualKeypadEnter:
    case kVirtualSpace:
        answer(buttons[std::size_t(focused)].answer);
        break;
    case kVirtualEscape:
        answer(0);
        break;
    case kVirtualTab:
        moveFocus((code.modifiers & kKeyShift) != 0 ? -1 : 1);
        break;
    case kVirtualLeft:
    case kVirtualUp:
        moveFocus(-1);
        break;
    case kVirtualRight:
    case kVirtualDown:
        moveFocus(1);
        break;
    default:
        break;
    }
    return kKeyConsumed;
}

long CMessageView::onKeyUp(TovraKeyCode&)
{
    return kKeyConsumed;
}
}
