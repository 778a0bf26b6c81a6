// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/CViewContainer.h"

#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/views/tree/ChildWalk.h"
#include "Tovrane/views/tree/KeptGround.h"

#include <algorithm>
#include <cstring>

namespace Tovra
{
CViewContainer::CViewContainer(const CRect& rect, CBitmap* bitmap) : CView(rect)
{
    CView::setBackground(bitmap);
}

CViewContainer::CViewContainer(const CViewContainer& other)
    : CView(other),
      backgroundColor(other.backgroundColor),
      backgroundOffset(other.backgroundOffset),
      offscreen(other.offscreen),
      ground(other.ground ? std::make_unique<KeptGround>() : nullptr)
{
    for (const CView* child : other.children)
        if (CView* copy = child->newCopy())
            children.push_back(copy);
}

// The extra reference keeps the count from reaching 0 a second time while the children drop theirs.
CViewContainer::~CViewContainer()
{
    CBaseObject::remember();
    CViewContainer::removeAll(true);
}

CViewContainer* CViewContainer::of(CView* view)
{
    const bool isContainer = view != nullptr && view->notify(nullptr, kMsgCheckIfViewContainer) == 1;
    return isContainer ? static_cast<CViewContainer*>(view) : nullptr;
}

long CViewContainer::notify(CBaseObject* sender, const char* message)
{
    if (message == kMsgCheckIfViewContainer)
        return 1;
    long answer = 0;
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
        if ((answer = child->notify(sender, message)) == 1)
            break;
    return answer;
}

bool CViewContainer::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CViewContainer") == 0) || CView::isTypeOf(name);
}

// The tree

void CViewContainer::insertChild(CView* view, size_t position)
{
    children.insert(children.begin() + long(position), view);
    for (ChildWalk* walk = walks; walk != nullptr; walk = walk->outer)
        walk->childInserted(position);
}

void CViewContainer::eraseChild(size_t position)
{
    dropPointersTo(children[position]);
    children.erase(children.begin() + long(position));
    for (ChildWalk* walk = walks; walk != nullptr; walk = walk->outer)
        walk->childErased(position);
}

void CViewContainer::dropPointersTo(CView* view)
{
    for (CView** pointer : {&mouseOverChild, &dragTarget, &mouseDownChild})
        if (*pointer == view)
            *pointer = nullptr;
}

bool CViewContainer::canTake(CView* view) const
{
    return view != nullptr && view != this && !view->isAttached() && !isChild(view);
}

bool CViewContainer::addView(CView* view)
{
    if (!canTake(view))
        return false;
    insertChild(view, children.size());
    if (isAttached())
    {
        view->attached(this);
        view->setDirty(true);
    }
    return true;
}

bool CViewContainer::addView(CView* view, const CRect& area, bool takesMouse)
{
    if (!CViewContainer::addView(view))
        return false;
    view->setMouseEnabled(takesMouse);
    view->setMouseableArea(area);
    return true;
}

bool CViewContainer::addView(CView* view, CView* before)
{
    if (!canTake(view))
        return false;
    const auto place = std::find(children.begin(), children.end(), before);
    insertChild(view, size_t(place - children.begin()));
    return true;
}

void CViewContainer::removeChild(CView* view, bool withForget)
{
    const Kept<CView> kept(view);
    if (mouseOverChild == view)
        mouseOverChild = nullptr;
    if (isAttached())
        view->removed(this);
    const auto place = std::find(children.begin(), children.end(), view);
    if (place == children.end()) // it was removed meanwhile
        return;
    eraseChild(size_t(place - children.begin()));
    if (withForget)
        view->forget();
}

bool CViewContainer::removeView(CView* view, const bool& withForget)
{
    const Kept<CViewContainer> self(this);
    if (isChild(view))
    {
        removeChild(view, withForget);
        return true;
    }
    while (!children.empty())
        eraseChild(children.size() - 1);
    return false;
}

bool CViewContainer::removeAll(const bool& withForget)
{
    const Kept<CViewContainer> self(this);
    while (!children.empty())
        removeChild(children.front(), withForget);
    return true;
}

bool CViewContainer::isChild(CView* view) const
{
    return std::find(children.begin(), children.end(), view) != children.end();
}

CView* CViewContainer::getView(long index) const
{
    return index >= 0 && index < getNbViews() ? children[size_t(index)] : nullptr;
}

void CViewContainer::bringViewToFront(CView* view)
{
    const auto place = std::find(children.begin(), children.end(), view);
    if (place == children.end())
        return;
    for (ChildWalk* walk = walks; walk != nullptr; walk = walk->outer)
        walk->childErased(size_t(place - children.begin()));
    std::rotate(place, place + 1, children.end());
}

CView* CViewContainer::getViewAt(const CPoint& where, bool deep) const
{
    if (getFrame() == nullptr || !isVisible())
        return nullptr;
    for (size_t i = children.size(); i-- > 0;)
    {
        CView* const child = children[i];
        if (!child->isVisible() || !child->hitTest(where, -1))
            continue;
        const CViewContainer* inner = deep ? of(child) : nullptr;
        return inner != nullptr ? inner->getViewAt(inner->toChildren(where), true) : child;
    }
    return nullptr;
}

CViewContainer* CViewContainer::getContainerAt(const CPoint& where, bool deep) const
{
    if (getFrame() == nullptr)
        return nullptr;
    CViewContainer* const self = const_cast<CViewContainer*>(this);
    const CPoint local = toChildren(where);
    for (size_t i = children.size(); i-- > 0;)
    {
        CView* const child = children[i];
        if (!child->isVisible() || !isWithinEdges(child->getMouseableArea(), local))
            continue;
        const CViewContainer* inner = deep ? of(child) : nullptr;
        return inner != nullptr ? inner->getContainerAt(local, true) : self;
    }
    return self;
}

bool CViewContainer::attached(CView* parent)
{
    if (isAttached())
        return false;
    setFrame(parent != nullptr ? parent->getFrame() : nullptr);
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
        child->attached(this);
    return CView::attached(parent);
}

bool CViewContainer::removed(CView* parent)
{
    if (!isAttached())
        return false;
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
        child->removed(this);
    return CView::removed(parent);
}

void CViewContainer::applyMarks()
{
    CView::applyMarks();
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
        child->applyMarks();
}

// Size and coordinates

void CViewContainer::setViewSize(const CRect& rect, bool invalidate)
{
    CView::setViewSize(rect, invalidate);
    CViewContainer::parentSizeChanged();
}

void CViewContainer::parentSizeChanged()
{
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
        child->parentSizeChanged();
}

CPoint& CViewContainer::frameToLocal(CPoint& point) const
{
    point.offset(-size.left, -size.top);
    const CViewContainer* outer = of(getParentView());
    return outer != nullptr ? outer->frameToLocal(point) : point;
}

CPoint& CViewContainer::localToFrame(CPoint& point) const
{
    point.offset(size.left, size.top);
    const CViewContainer* outer = of(getParentView());
    return outer != nullptr ? outer->localToFrame(point) : point;
}

CRect CViewContainer::getVisibleSize(CRect rect) const
{
    const CPoint origin = contentOrigin();
    rect.offset(origin);
    rect.bound(size);
    const CFrame* const root = getFrame();
    if (root != this)
    {
        if (const CViewContainer* outer = of(getParentView()))
            rect = outer->getVisibleSize(rect);
        else if (root != nullptr)
            rect = root->getVisibleSize(rect);
    }
    return rect.offset(CPoint() - origin);
}
}
