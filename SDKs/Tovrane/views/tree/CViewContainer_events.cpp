// SPDX-License-Identifier: GPL-3.0-or-later
// How a container passes events on to its children: the topmost first, in its own coordinates.
#include "Tovrane/views/tree/CControl.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/views/tree/CViewContainer.h"
#include "Tovrane/views/tree/ChildWalk.h"

namespace Tovra
{
bool CViewContainer::takesMouseAt(CView* child, const CPoint& where, long buttons)
{
    return child->isVisible() && child->getMouseEnabled() && child->hitTest(where, buttons) &&
           child->isEnabled();
}

bool CViewContainer::hitTestSubViews(const CPoint& where, long buttons)
{
    const CPoint local = toChildren(where);
    ChildWalk walk(*this, ChildWalk::fromAbove);
    while (CView* child = walk.next())
        if (child->getMouseEnabled() && child->hitTest(local, buttons))
            return true;
    return false;
}

bool CViewContainer::isClickTakenByListener(CView* child, const long& buttons)
{
    if ((buttons & kAllModifiers) == 0)
        return false;
    CControl* const control = CControl::of(child);
    CControlListener* const listener = control != nullptr ? control->getListener() : nullptr;
    return listener != nullptr && listener->controlModifierClicked(control, buttons) != 0;
}

MouseEventResult CViewContainer::onMouseDown(CPoint& where, const long& buttons)
{
    const CPoint local = toChildren(where);
    ChildWalk walk(*this, ChildWalk::fromAbove);
    while (CView* child = walk.next())
    {
        if (!takesMouseAt(child, local, buttons))
            continue;
        if (isClickTakenByListener(child, buttons))
            return kMouseHandled;
        CPoint point = local;
        const MouseEventResult result = child->onMouseDown(point, buttons);
        if (result == kMouseHandled)
            setMouseDownChild(child);
        if (result == kMouseHandled || result == kMouseHandledNoMoves)
            return result;
    }
    return kMouseUnhandled;
}

MouseEventResult CViewContainer::onMouseUp(CPoint& where, const long& buttons)
{
    const Kept<CViewContainer> self(this);
    const Kept<CView> child(mouseDownChild);
    if (!child)
        return kMouseUnhandled;
    CPoint point = toChildren(where);
    child->onMouseUp(point, buttons);
    if (!child->holdsMouse())
        mouseDownChild = nullptr;
    return kMouseHandled;
}

bool CViewContainer::holdsMouse() const
{
    return mouseDownChild != nullptr && mouseDownChild->holdsMouse();
}

bool CViewContainer::moveToChildren(const CPoint& local, const long& buttons)
{
    ChildWalk walk(*this, ChildWalk::fromAbove);
    const Kept<CView> captured(mouseDownChild);
    CPoint point = local;
    if (captured && captured->onMouseMoved(point, buttons) == kMouseHandled)
        return true;
    while (CView* child = walk.next())
    {
        point = local;
        if (takesMouseAt(child, local, buttons) && child->onMouseMoved(point, buttons) == kMouseHandled)
            return true;
    }
    return false;
}

MouseEventResult CViewContainer::onMouseMoved(CPoint& where, const long& buttons)
{
    const Kept<CViewContainer> self(this);
    const CPoint local = toChildren(where);
    const bool handled = moveToChildren(local, buttons);
    trackMouse(local, buttons);
    return handled ? kMouseHandled : kMouseUnhandled;
}

void CViewContainer::trackMouse(const CPoint& local, const long& buttons)
{
    const Kept<CView> former(mouseOverChild);
    const Kept<CView> next(getViewAt(local, false));
    if (former.get() == next.get())
        return;
    CPoint point = local;
    if (former)
        former->onMouseExited(point, buttons);
    point = local;
    if (next && isChild(next.get()))
        next->onMouseEntered(point, buttons);
    setMouseOverChild(next.get());
}

MouseEventResult CViewContainer::onMouseEntered(CPoint& where, const long& buttons)
{
    const Kept<CViewContainer> self(this);
    trackMouse(toChildren(where), buttons);
    return kMouseHandled;
}

MouseEventResult CViewContainer::onMouseExited(CPoint& where, const long& buttons)
{
    const Kept<CViewContainer> self(this);
    const Kept<CView> former(mouseOverChild);
    CPoint point = toChildren(where);
    if (former)
        former->onMouseExited(point, buttons);
    mouseOverChild = nullptr;
    return kMouseUnimplemented;
}

bool CViewContainer::onWheel(const CPoint& where, const float& distance, const long& buttons)
{
    return CViewContainer::onWheel(where, kMouseWheelAxisY, distance, buttons);
}

bool CViewContainer::onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                             const long& buttons)
{
    const CPoint local = toChildren(where);
    ChildWalk walk(*this, ChildWalk::fromAbove);
    while (CView* child = walk.next())
        if (child->isWheelActive() && takesMouseAt(child, local, buttons) &&
            child->onWheel(local, axis, distance, buttons))
            return true;
    return false;
}

long CViewContainer::onKeyDown(TovraKeyCode& code)
{
    ChildWalk walk(*this, ChildWalk::fromAbove);
    while (CView* child = walk.next())
    {
        const long answer = child->onKeyDown(code);
        if (answer != kKeyNotHandled)
            return answer;
    }
    return kKeyNotHandled;
}

bool CViewContainer::advanceNextFocusView(CView* old, bool reverse)
{
    bool passed = old == nullptr;
    ChildWalk walk(*this, reverse ? ChildWalk::fromAbove : ChildWalk::fromBelow);
    while (CView* child = walk.next())
    {
        if (!passed)
        {
            passed = child == old;
            continue;
        }
        if (child->wantsFocus() && getFrame() != nullptr)
        {
            getFrame()->setFocusView(child);
            return true;
        }
        CViewContainer* const inner = of(child);
        if (inner != nullptr && inner->advanceNextFocusView(nullptr, reverse))
            return true;
    }
    return false;
}

void CViewContainer::looseFocus()
{
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
        child->looseFocus();
}

void CViewContainer::takeFocus()
{
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
        child->takeFocus();
}

// Drags. A view that is left or entered may change the tree.

void CViewContainer::leaveDragTarget(CDragContainer* drag, const CPoint& local)
{
    const Kept<CView> target(dragTarget);
    dragTarget = nullptr;
    if (target)
        target->onDragLeave(drag, local);
}

void CViewContainer::enterDragTarget(CView* next, CDragContainer* drag, const CPoint& local)
{
    if (next == nullptr || !isChild(next))
        return;
    next->onDragEnter(drag, local);
    dragTarget = isChild(next) ? next : nullptr;
}

void CViewContainer::onDragEnter(CDragContainer* drag, const CPoint& where)
{
    if (getFrame() == nullptr)
        return;
    const Kept<CViewContainer> self(this);
    const CPoint local = toChildren(where);
    leaveDragTarget(drag, local);
    const Kept<CView> next(getViewAt(local, false));
    enterDragTarget(next.get(), drag, local);
}

void CViewContainer::onDragMove(CDragContainer* drag, const CPoint& where)
{
    if (getFrame() == nullptr)
        return;
    const Kept<CViewContainer> self(this);
    const CPoint local = toChildren(where);
    const Kept<CView> next(getViewAt(local, false));
    if (next.get() != dragTarget)
    {
        leaveDragTarget(drag, local);
        enterDragTarget(next.get(), drag, local);
    }
    else if (next)
        next->onDragMove(drag, local);
}

void CViewContainer::onDragLeave(CDragContainer* drag, const CPoint& where)
{
    if (getFrame() == nullptr)
        return;
    const Kept<CViewContainer> self(this);
    leaveDragTarget(drag, toChildren(where));
}

bool CViewContainer::onDrop(CDragContainer* drag, const CPoint& where)
{
    if (getFrame() == nullptr)
        return false;
    const Kept<CViewContainer> self(this);
    CViewContainer::onDragMove(drag, where);
    const Kept<CView> target(dragTarget);
    dragTarget = nullptr;
    return target && target->onDrop(drag, toChildren(where));
}
}
