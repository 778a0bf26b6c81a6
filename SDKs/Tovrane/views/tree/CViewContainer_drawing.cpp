// SPDX-License-Identifier: GPL-3.0-or-later
// What a container shows, and how it draws its children into their places.
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/views/tree/CViewContainer.h"
#include "Tovrane/views/tree/ChildWalk.h"
#include "Tovrane/views/tree/KeptGround.h"

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
    childChanged(nullptr);
}

void CViewContainer::setBackgroundOffset(const CPoint& offset)
{
    backgroundOffset = offset;
    childChanged(nullptr);
}

void CViewContainer::keepGround(bool flag)
{
    ground = flag ? std::make_unique<KeptGround>() : nullptr;
}

void CViewContainer::childChanged(CView* child)
{
    if (ground != nullptr && (child == nullptr || child->isStatic()))
        ground->drop();
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

// On whole pixels, so that a fractional position never reaches the pixels of the children.
CPoint CViewContainer::contentOrigin() const
{
    return CPoint(std::floor(size.left), std::floor(size.top));
}

bool CViewContainer::checkUpdateRect(CView* view, const CRect& update)
{
    return view->checkUpdate(update) && view->isVisible();
}

// Moves a context into a container's content, and back again at the end.
class InsideContainer
{
public:
    InsideContainer(CDrawContext& moved, const CPoint& origin)
        : context(moved),
          frameOffset(moved.getFrameOffset()),
          offset(moved.getOffset()),
          clip(moved.saveClip())
    {
        context.setFrameOffset(frameOffset + origin);
        context.setOffset(offset + origin);
    }

    ~InsideContainer()
    {
        context.setFrameOffset(frameOffset);
        context.setOffset(offset);
        context.restoreClip(clip);
    }

    InsideContainer(const InsideContainer&) = delete;
    InsideContainer& operator=(const InsideContainer&) = delete;

private:
    CDrawContext& context;
    const CPoint frameOffset;
    const CPoint offset;
    const CDrawContext::ClipState clip;
};

void CViewContainer::draw(CDrawContext* context)
{
    const InsideContainer inside(*context, contentOrigin());
    context->enterView(CRect(0.0, 0.0, size.getWidth(), size.getHeight()));
    drawInside(context);
}

void CViewContainer::drawRect(CDrawContext* context, const CRect& update)
{
    const InsideContainer inside(*context, contentOrigin());
    CRect part = update;
    context->limitTo(part.offset(CPoint() - contentOrigin()));
    drawInside(context);
}

void CViewContainer::drawInside(CDrawContext* context)
{
    if (drawGround(context))
        return drawChildren(context, childrenAbove);
    drawBackground(context);
    drawChildren(context, everyChild);
}

// False if there is none.
bool CViewContainer::drawGround(CDrawContext* context)
{
    if (ground == nullptr || getFrame() == nullptr)
        return false;
    KeptGround::Content content;
    content.isTransparent = getTransparency();
    for (const CView* child : children)
    {
        if (!child->isStatic())
            break;
        content.children.push_back({child, child->getViewSize(), child->isVisible()});
    }
    return ground->paint(
        *getFrame(), *context, std::move(content), [&] { drawBackground(context); },
        [&] { drawChildren(context, groundChildren); });
}

void CViewContainer::drawBackground(CDrawContext* context)
{
    CRect part = context->getClipRect();
    drawBackgroundRect(context, part);
}

void CViewContainer::drawChildren(CDrawContext* context, Layer layer)
{
    const CRect update = context->getClipRect();
    bool isAbove = false;
    ChildWalk walk(*this, ChildWalk::fromBelow);
    while (CView* child = walk.next())
    {
        isAbove = isAbove || !child->isStatic();
        if (layer != everyChild && isAbove != (layer == childrenAbove))
            continue;
        if (!checkUpdateRect(child, update) || !child->isVisible())
            continue;
        CRect part = child->getViewSize();
        if (part.bound(update).isEmpty())
            continue;
        const CDrawContext::ClipState saved = context->saveClip();
        context->enterView(child->getViewSize());
        child->drawRect(context, part);
        context->restoreClip(saved);
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
        context->setLineWidth(1.0); // whatever the views before have left
        context->drawRect(context->withoutLimit(update), kFilledAndStroked);
        return;
    }
    const CDrawContext::ClipState saved = context->saveClip();
    CRect clip = context->getClipRect();
    context->setClipRect(clip.bound(update));
    const CRect whole(0.0, 0.0, size.getWidth(), size.getHeight());
    if (getTransparency())
        bitmap->drawTransparent(context, whole, backgroundOffset);
    else
        bitmap->draw(context, whole, backgroundOffset);
    context->restoreClip(saved);
}
}
