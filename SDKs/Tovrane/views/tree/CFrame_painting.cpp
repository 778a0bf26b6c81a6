// SPDX-License-Identifier: GPL-3.0-or-later
// How a frame collects what is dirty, and draws it.
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/IFrame.h"

namespace Tovra
{
void CFrame::idle()
{
    const Kept<CFrame> self(this);
    tasks.run();
    if (const unsigned marks = countMarks(); marks != appliedMarks)
    {
        appliedMarks = marks;
        applyMarks();
    }
    paint();
}

void CFrame::doTasks()
{
    const Kept<CFrame> self(this);
    tasks.run();
}

void CFrame::paint()
{
    const auto context = Kept<CDrawContext>::adopt(createDrawContext());
    draw(context.get());
}

static bool contains(const CRect& outer, const CRect& inner)
{
    return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
           outer.bottom >= inner.bottom;
}

void CFrame::addDirtyRect(const CRect& part, CView*)
{
    CRect rect = part;
    rect.roundOut();
    if (dirtyRects.size() >= CDirtyRectHelper::initialCapacity)
    {
        setDirty(true);
        return;
    }
    for (std::int32_t i = 0; i < dirtyRects.size(); ++i)
        if (contains(dirtyRects[i], rect))
            return;
    dirtyRects.push_back(rect);
}

void CFrame::draw(CDrawContext* context)
{
    const Kept<CFrame> self(this);
    drawDirty(context);
    showDrawn();
}

void CFrame::drawDirty(CDrawContext* context)
{
    const Core::Threads::SectionGuard guard(drawLock);
    PelmoAGG* const shared = context != nullptr ? context->getAGGRenderer() : renderer.get();
    if (shared != nullptr)
        shared->masterAlpha(1.0);

    const bool isAll = isDirty();
    if (isAll)
    {
        setDirty(false);
        ++fullPaints;
        drawRects.clear();
        drawRects.push_back(size);
    }
    else
        drawRects.copyFrom(dirtyRects);
    dirtyRects.clear();

    drawnRects.clear();
    const CPoint origin = isAll ? CPoint() : contentOrigin(); // what is dirty is part of the content
    for (std::int32_t i = 0; i < drawRects.size(); ++i)
    {
        const CRect part = CRect(drawRects[i]).offset(origin);
        if (drawPart(context, part) || isAll)
            drawnRects.push_back(part);
    }
    if (context != nullptr)
        context->resetClipRect();
}

// Nothing but what was drawn is put to the screen.
void CFrame::showDrawn()
{
    if (drawnRects.size() > 0 && renderer->takeUnclipped())
        return invalidRect(size);
    for (std::int32_t i = 0; i < drawnRects.size(); ++i)
        platformFrame->invalidRect(drawnRects[i]);
}

bool CFrame::drawPart(CDrawContext* given, const CRect& rect)
{
    if (!(rect.getWidth() > 0.0) || !(rect.getHeight() > 0.0))
        return false;
    const Kept<CDrawContext> context =
        given != nullptr ? Kept<CDrawContext>(given) : Kept<CDrawContext>::adopt(createDrawContext());
    frameBitmap->beginDrawing();
    const CDrawContext::ClipState saved = context->saveClip();
    context->enterView(wholePicture());
    CViewContainer::drawRect(context.get(), rect);
    context->restoreClip(saved);
    return true;
}

void CFrame::drawRect(CDrawContext* context, const CRect& update)
{
    drawPart(context, update);
}

void CFrame::invalidRect(CRect)
{
    platformFrame->invalidRect(size);
}

void CFrame::invalid()
{
    invalidRect(size);
    setDirty(false);
}
}
