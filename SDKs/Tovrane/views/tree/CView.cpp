// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/CView.h"

#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/views/tree/IFrameEditor.h"

#include <cstring>

namespace Tovra
{
const char* const kMsgCheckIfViewContainer = "kMsgCheckIfViewContainer";

// Counts for all views, so that a frame only walks over its tree when something was marked.
static std::atomic<unsigned> marksSoFar = 0;

unsigned CView::countMarks()
{
    return marksSoFar.load(std::memory_order_acquire);
}

CView::CView(const CRect& rect) : size(rect), mouseableArea(rect), ownThread(std::this_thread::get_id()) {}

CView::CView(const CView& other)
    : CBaseObject(other),
      size(other.size),
      mouseableArea(other.mouseableArea),
      dirty(other.dirty),
      visible(other.visible),
      enabled(other.enabled),
      ownThread(std::this_thread::get_id()),
      mouseEnabled(other.mouseEnabled),
      transparent(other.transparent),
      focusWanted(other.focusWanted),
      wheelActive(other.wheelActive),
      background(other.background)
{
}

CView::~CView()
{
    CView::setFrame(nullptr);
}

void CView::draw(CDrawContext* context)
{
    if (background)
    {
        if (transparent)
            background->drawTransparent(context, size, CPoint());
        else
            background->draw(context, size, CPoint());
    }
    setDirty(false);
}

void CView::drawRect(CDrawContext* context, const CRect&)
{
    draw(context);
}

bool CView::checkUpdate(const CRect& update) const
{
    return !(size.left > update.right) && !(update.left > size.right) && !(size.top > update.bottom) &&
           !(size.bottom < update.top);
}

bool CView::isOnOwnThread() const
{
    return ownThread.load() == std::this_thread::get_id();
}

void CView::setDirty(bool flag)
{
    dirty = flag;
    if (!flag)
        return;
    if (isOnOwnThread())
        addDirtyRect();
    else
    {
        marked.store(true, std::memory_order_release);
        marksSoFar.fetch_add(1, std::memory_order_release);
    }
}

void CView::childChanged(CView*) {}

void CView::addDirtyRect()
{
    childChanged(nullptr);
    for (CView* view = this; view->parentView != nullptr; view = view->parentView)
        view->parentView->childChanged(view);
    if (frame == nullptr)
        return;
    CRect rect = getVisibleSize();
    frame->localRectToFrameRect(this, rect);
    frame->addDirtyRect(rect, this);
}

void CView::applyMarks()
{
    if (marked.exchange(false, std::memory_order_acquire))
        addDirtyRect();
}

void CView::invalidRect(CRect rect)
{
    rect.offset(size.getTopLeft());
    if (parentView != nullptr)
        parentView->invalidRect(rect);
    else if (frame != nullptr)
        frame->invalidRect(rect);
}

void CView::setVisible(bool flag)
{
    visible = flag;
    setDirty(true);
}

void CView::setEnabled(bool flag)
{
    enabled = flag;
    setDirty(true);
}

bool CView::isVisible() const
{
    if (!visible)
        return false;
    if (parentView == nullptr)
        return true;
    const CRect& outer = parentView->size;
    CRect part = size;
    part.bound(CRect(0.0, 0.0, outer.getWidth(), outer.getHeight()));
    return !part.isEmpty() && parentView->isVisible();
}

MouseEventResult CView::onMouseDown(CPoint&, const long&)
{
    return kMouseUnimplemented;
}

MouseEventResult CView::onMouseUp(CPoint&, const long&)
{
    return kMouseUnimplemented;
}

MouseEventResult CView::onMouseMoved(CPoint&, const long&)
{
    return kMouseUnimplemented;
}

MouseEventResult CView::onMouseEntered(CPoint&, const long&)
{
    return kMouseUnimplemented;
}

MouseEventResult CView::onMouseExited(CPoint&, const long&)
{
    return kMouseUnimplemented;
}

bool CView::hitTest(const CPoint& where, long)
{
    return isWithinEdges(mouseableArea, where);
}

bool CView::onWheel(const CPoint&, const float&, const long&)
{
    return false;
}

bool CView::onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                    const long& buttons)
{
    const bool turned = axis == kMouseWheelAxisX && (buttons & kModShift) == 0;
    return onWheel(where, turned ? -distance : distance, buttons);
}

bool CView::onDrop(CDragContainer*, const CPoint&)
{
    return false;
}

void CView::onDragEnter(CDragContainer*, const CPoint&) {}

void CView::onDragLeave(CDragContainer*, const CPoint&) {}

void CView::onDragMove(CDragContainer*, const CPoint&) {}

long CView::onKeyDown(TovraKeyCode&)
{
    return kKeyNotHandled;
}

long CView::onKeyUp(TovraKeyCode&)
{
    return kKeyNotHandled;
}

void CView::setViewSize(const CRect& rect, bool invalidate)
{
    if (invalidate)
        setDirty(true);
    size = rect;
    if (invalidate)
        setDirty(true);
}

CRect CView::getVisibleSize() const
{
    if (const CViewContainer* container = CViewContainer::of(parentView))
        return container->getVisibleSize(size);
    return frame != nullptr ? frame->getVisibleSize(size) : CRect();
}

static CViewContainer* containerAbove(CView* view)
{
    for (; view != nullptr; view = view->getParentView())
        if (CViewContainer* container = CViewContainer::of(view))
            return container;
    return nullptr;
}

CPoint& CView::frameToLocal(CPoint& point) const
{
    const CViewContainer* container = containerAbove(parentView);
    return container != nullptr ? container->frameToLocal(point) : point;
}

CPoint& CView::localToFrame(CPoint& point) const
{
    const CViewContainer* container = containerAbove(parentView);
    return container != nullptr ? container->localToFrame(point) : point;
}

void CView::setBackground(CBitmap* bitmap)
{
    background.reset(bitmap);
    setDirty(true);
}

bool CView::removed(CView*)
{
    if (!attachedFlag)
        return false;
    if (frame != nullptr)
        frame->onViewRemoved(this);
    setParentView(nullptr);
    setFrame(nullptr);
    attachedFlag = false;
    return true;
}

bool CView::attached(CView* parent)
{
    if (attachedFlag)
        return false;
    ownThread = std::this_thread::get_id();
    setParentView(parent);
    setFrame(parent != nullptr ? parent->getFrame() : nullptr);
    attachedFlag = true;
    return true;
}

// A frame that held a reference to itself would never be destroyed.
void CView::setFrame(CFrame* next)
{
    if (next == frame)
        return;
    CFrame* const former = frame;
    frame = next;
    if (next != nullptr && next != this)
        next->remember();
    if (former != nullptr && former != this)
        former->forget();
}

IFrameEditor* CView::getEditor() const
{
    return frame != nullptr ? frame->getEditor() : nullptr;
}

bool CView::isTypeOf(const char* name) const
{
    return name != nullptr && std::strcmp(name, "CView") == 0;
}

double CView::getSampleRate() const
{
    const IFrameEditor* editor = getEditor();
    return editor != nullptr ? editor->getSampleRate() : 44100.0;
}

bool isWithinEdges(const CRect& rect, const CPoint& point)
{
    return point.x >= rect.left && point.x <= rect.right && point.y >= rect.top && point.y <= rect.bottom;
}
}
