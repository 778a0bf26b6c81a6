// SPDX-License-Identifier: GPL-3.0-or-later
// What a container shows, and how it draws its children into their places.
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/views/tree/CViewContainer.h"
#include "Tovrane/views/tree/ChildWalk.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
void CViewContainer::setVisible(bool flag)
{
    setSubViewsVisible(flag);
    CView::setVisible(flag);
}

void CViewContainer::setSubViewsVisible(bool flag)
{
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
        child->setVisible(flag);
}

void CViewContainer::setBackgroundColor(CColor color)
{
    backgroundColor = color;
}

bool CViewContainer::isDirty() const
{
    if (CView::isDirty())
        return true;
    const CRect inside(0.0, 0.0, size.getWidth(), size.getHeight());
    return std::any_of(children.begin(), children.end(),
                       [&](const CView* child)
                       {
                           CRect part = child->getViewSize();
                           return child->isDirty() && child->isVisible() && !part.bound(inside).isEmpty();
                       });
}

void CViewContainer::invalid()
{
    if (!isVisible())
        return;
    if (CView* parent = getParentView())
        parent->invalidRect(size);
    else if (getFrame() != nullptr)
        getFrame()->invalidRect(size);
}

bool CViewContainer::invalidateDirtyViews()
{
    if (!isVisible())
        return true;
    if (CView::isDirty())
    {
        CViewContainer::invalid();
        return true;
    }
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
    {
        if (!child->isDirty() || !child->isVisible())
            continue;
        if (CViewContainer* inner = of(child))
            inner->invalidateDirtyViews();
        else
            child->setDirty(true);
    }
    return true;
}

// Drawing

bool CViewContainer::checkUpdateRect(CView* view, const CRect& update)
{
    return view->checkUpdate(update) && view->isVisible();
}

void CViewContainer::draw(CDrawContext* context)
{
    drawInside(context, CRect(0.0, 0.0, size.getWidth(), size.getHeight()));
}

void CViewContainer::drawRect(CDrawContext* context, const CRect& update)
{
    CRect inside = update;
    drawInside(context, inside.offset(-size.left, -size.top));
}

// A fractional origin never reaches the pixels of the children.
void CViewContainer::drawInside(CDrawContext* context, const CRect& update)
{
    const CPoint frameOffset = context->getFrameOffset();
    const CPoint offset = context->getOffset();
    const CPoint origin(std::floor(size.left), std::floor(size.top));
    context->setFrameOffset(frameOffset + origin);
    context->setOffset(offset + origin);

    const CRect savedClip = context->getClipRect();
    CRect clip = update;
    clip.bound(savedClip);
    context->setClipRect(clip);
    CRect backgroundPart = clip;
    drawBackgroundRect(context, backgroundPart);
    drawChildren(context, clip, update);

    context->setClipRect(savedClip);
    context->setFrameOffset(frameOffset);
    context->setOffset(offset);
}

void CViewContainer::drawChildren(CDrawContext* context, const CRect& clip, const CRect& update)
{
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
    {
        if (!checkUpdateRect(child, update) || !child->isVisible())
            continue;
        CRect part = child->getViewSize();
        part.bound(clip);
        if (!(part.getWidth() > 0.0) || !(part.getHeight() > 0.0))
            continue;
        context->setClipRect(part);
        child->drawRect(context, part);
    }
}

void CViewContainer::drawBackgroundRect(CDrawContext* context, CRect& update)
{
    CBitmap* const bitmap = getBackground();
    if (bitmap == nullptr)
    {
        if (getTransparency())
            return;
        context->setFillColor(backgroundColor);
        context->setFrameColor(backgroundColor);
        context->drawRect(update, kFilledAndStroked);
        return;
    }
    const CRect savedClip = context->getClipRect();
    CRect clip = savedClip;
    context->setClipRect(clip.bound(update));
    const CRect whole(0.0, 0.0, size.getWidth(), size.getHeight());
    if (getTransparency())
        bitmap->drawTransparent(context, whole, backgroundOffset);
    else
        bitmap->draw(context, whole, backgroundOffset);
    context->setClipRect(savedClip);
}
}
