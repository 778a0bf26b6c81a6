// SPDX-License-Identifier: GPL-3.0-or-later
// What a frame does with the events of its window, before what every container does.
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/views/tree/ChildWalk.h"

namespace Tovra
{
// A left click with control counts as the right button, and one with command as the middle button, without
// any other bits of the word.
static long normalisedButtons(long buttons)
{
    if ((buttons & kButtonLeft) == 0)
        return buttons;
    if ((buttons & kModControl) != 0)
        return kButtonRight;
    return (buttons & kModCommand) != 0 ? kButtonMiddle : buttons;
}

// A left button whose press counted as another one is that one until it is released.
long CFrame::asPressed(long buttons) const
{
    constexpr long replaced = kButtonLeft | kModControl | kModCommand;
    return leftStandsFor == 0 || (buttons & kButtonLeft) == 0 ? buttons
                                                              : (buttons & ~replaced) | leftStandsFor;
}

void CFrame::noteMouse(const CPoint& where, long buttons)
{
    lastMousePosition = where;
    lastMouseButtons = buttons;
}

MouseEventResult CFrame::onMouseDown(CPoint& where, const long& pressed)
{
    const Kept<CFrame> self(this);
    const long buttons = normalisedButtons(pressed);
    if ((pressed & kButtonLeft) != 0)
        leftStandsFor = buttons != pressed ? buttons : 0;
    noteMouse(where, buttons);
    if (holdsMouse())
        return kMouseHandled;
    setMouseDownChild(nullptr);
    showFocus(false);
    if (focusView)
        dropFocusOutside(where, buttons);
    if (modalView)
        return clickModalView(where, buttons);
    const CPoint clicked = where;
    const MouseEventResult result = CViewContainer::onMouseDown(where, buttons);
    return result == kMouseUnhandled ? clickGround(clicked, buttons) : result;
}

void CFrame::showFocus(bool flag)
{
    if (focusShown == flag)
        return;
    focusShown = flag;
    if (focusView)
        focusView->setDirty(true);
}

MouseEventResult CFrame::clickGround(const CPoint& where, long buttons)
{
    if ((buttons & kButtonRight) == 0 || !onGroundMenu)
        return kMouseUnhandled;
    onGroundMenu(where);
    return kMouseHandledNoMoves;
}

void CFrame::dropFocusOutside(const CPoint& where, const long& buttons)
{
    CPoint local = where;
    focusView->frameToLocal(local);
    if (focusView->hitTest(local, buttons))
        return;
    setFocusView(nullptr);

    const Kept<CView> child(getMouseDownChild());
    if (!child || getViewAt(where, true) == child.get())
        return;
    CPoint point = where;
    child->onMouseExited(point, buttons);
    setMouseDownChild(nullptr);
}

MouseEventResult CFrame::clickModalView(CPoint& where, const long& buttons)
{
    const Kept<CView> modal = modalView;
    CPoint point = where;
    if (!modal->hitTest(where, buttons) || modal->onMouseDown(point, buttons) != kMouseHandled)
        return kMouseUnhandled;
    setMouseDownChild(modal.get());
    return kMouseHandled;
}

MouseEventResult CFrame::onMouseUp(CPoint& where, const long& released)
{
    const Kept<CFrame> self(this);
    const long buttons = asPressed(released);
    if ((released & kButtonLeft) != 0)
        leftStandsFor = 0;
    noteMouse(where, buttons);
    const Kept<CView> child(getMouseDownChild());
    CPoint point = where;
    if (child && !child->getViewSize().pointInside(where))
        child->onMouseExited(point, buttons);
    return CViewContainer::onMouseUp(where, buttons);
}

MouseEventResult CFrame::onMouseMoved(CPoint& where, const long& held)
{
    const Kept<CFrame> self(this);
    const long buttons = asPressed(held);
    noteMouse(where, buttons);
    const Kept<CView> modal = modalView;
    CPoint point = where;
    return modal ? modal->onMouseMoved(point, buttons) : CViewContainer::onMouseMoved(where, buttons);
}

MouseEventResult CFrame::onMouseExited(CPoint& where, const long& buttons)
{
    const Kept<CFrame> self(this);
    noteMouse(where, buttons);
    const Kept<CView> modal = modalView;
    CPoint point = where;
    if (modal && modal.get() != getMouseOverChild())
        modal->onMouseExited(point, buttons);
    CViewContainer::onMouseExited(where, buttons);
    if (getMouseDownChild() == nullptr)
    {
        setCursor(kCursorDefault);
        setDataReadOutText("");
    }
    return kMouseHandled;
}

// The frame does not ask its own children whether isWheelActive.
template <typename Call>
bool CFrame::wheelTo(const CPoint& where, const long& buttons, Call call)
{
    const Kept<CFrame> self(this);
    noteMouse(where, buttons);
    const auto takes = [&](CView* view)
    {
        if (!takesMouseAt(view, where, buttons) || !call(view))
            return false;
        setMouseDownChild(view);
        return true;
    };
    const Kept<CView> modal = modalView;
    if (modal)
        return takes(modal.get());
    ChildWalk walk(*this, ChildWalk::fromAbove);
    while (CView* child = walk.next())
        if (takes(child))
            return true;
    return false;
}

bool CFrame::onWheel(const CPoint& where, const float& distance, const long& buttons)
{
    return wheelTo(where, buttons, [&](CView* view) { return view->onWheel(where, distance, buttons); });
}

bool CFrame::onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                     const long& buttons)
{
    return wheelTo(where, buttons,
                   [&](CView* view) { return view->onWheel(where, axis, distance, buttons); });
}

// Keys and focus

long CFrame::onKeyDown(TovraKeyCode& code)
{
    const Kept<CFrame> self(this);
    for (const Kept<CView>* first : {&focusView, &modalView})
    {
        const Kept<CView> view = *first;
        const long answer = view ? view->onKeyDown(code) : kKeyNotHandled;
        if (answer != kKeyNotHandled)
            return answer;
    }
    const long answer = CViewContainer::onKeyDown(code);
    if (answer != kKeyNotHandled || code.virtualKey != kVirtualTab)
        return answer;
    const Kept<CView> old = focusView;
    if (!advanceNextFocusView(old.get(), (code.modifiers & kKeyShift) != 0))
        return kKeyNotHandled;
    showFocus(true);
    return kKeyConsumed;
}

long CFrame::onKeyUp(TovraKeyCode& code)
{
    const Kept<CFrame> self(this);
    for (const Kept<CView>* first : {&focusView, &modalView})
    {
        const Kept<CView> view = *first;
        const long answer = view ? view->onKeyUp(code) : kKeyNotHandled;
        if (answer != kKeyNotHandled)
            return answer;
    }
    return kKeyNotHandled;
}

namespace
{
// Shared by all frames of the process.
bool isFocusChanging = false;

struct FocusChange
{
    FocusChange() { isFocusChanging = true; }
    ~FocusChange() { isFocusChanging = false; }
};
}

static void redrawIfFocusWanted(CView& view)
{
    if (view.wantsFocus())
        view.setDirty(true);
}

void CFrame::setFocusView(CView* view)
{
    if (view == focusView.get() || isFocusChanging)
        return;
    const Kept<CFrame> self(this);
    const FocusChange guard;
    const Kept<CView> old = focusView;
    focusView.reset(view);
    if (view != nullptr)
        redrawIfFocusWanted(*view);
    if (old)
    {
        redrawIfFocusWanted(*old.get());
        old->looseFocus();
    }
}

bool CFrame::advanceNextFocusView(CView* old, bool reverse)
{
    const Kept<CFrame> self(this);
    if (const Kept<CView> modal = modalView)
    {
        if (CViewContainer* container = of(modal.get()))
            return container->advanceNextFocusView(old, reverse);
        if (old == modal.get())
            return false;
        setFocusView(modal.get());
        return true;
    }
    const Kept<CView> start(old != nullptr ? old : focusView.get());
    if (!start)
        return CViewContainer::advanceNextFocusView(nullptr, reverse);
    return isChild(start.get()) ? advanceFromChild(start.get(), reverse)
                                : advanceFromDepth(start.get(), reverse);
}

bool CFrame::advanceFromChild(CView* child, bool reverse)
{
    if (CViewContainer::advanceNextFocusView(child, reverse))
        return true;
    setFocusView(nullptr);
    return false;
}

// On the way up each container goes on after the child that was left.
bool CFrame::advanceFromDepth(CView* old, bool reverse)
{
    CView* below = old;
    while (CViewContainer* above = of(below->getParentView()))
    {
        if (above->advanceNextFocusView(below, reverse))
            return true;
        below = above;
    }
    return CViewContainer::advanceNextFocusView(old, reverse);
}
}
