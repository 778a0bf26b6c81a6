// SPDX-License-Identifier: GPL-3.0-or-later
// A view that contains views: it draws them in the order in which they were added, and passes events on to
// them, the topmost first. The children's rectangles are in its coordinates: (0, 0) is its own top left.
//
// A child that is called may remove itself or others from the tree: a walk over the children (ChildWalk)
// keeps a reference to the child that it calls, and skips those that were removed.
//
// All of it is [window thread].
#pragma once

#include "Tovrane/draw/CColor.h"
#include "Tovrane/views/tree/CView.h"

#include <memory>
#include <vector>

namespace Tovra
{
class KeptGround;

class CViewContainer : public CView
{
public:
    explicit CViewContainer(const CRect& rect, CBitmap* bitmap = nullptr);
    // Copies the children, too.
    CViewContainer(const CViewContainer& other);
    ~CViewContainer() override;

    // Adds a view on top of the others. The caller's reference passes to the container. False for null, and
    // for a view that is attached or a child already.
    virtual bool addView(CView* view);
    virtual bool addView(CView* view, const CRect& mouseableArea, bool mouseEnabled);
    // Adds a view below before, or on top if that is not a child. Unlike the other forms it does not attach
    // the view, which therefore has no frame until its container is attached again.
    virtual bool addView(CView* view, CView* before);
    // Without withForget the container's reference passes to the caller. If view is not a child, all children
    // are dropped, without being told and without forget, and the result is false.
    virtual bool removeView(CView* view, const bool& withForget = true);
    virtual bool removeAll(const bool& withForget = true);
    // Whether view is a direct child.
    virtual bool isChild(CView* view) const;
    virtual long getNbViews() const { return long(children.size()); }
    // Counts from the lowest child; null out of range.
    virtual CView* getView(long index) const;
    // The topmost visible child at the point, or null. With deep, if that is a container, the topmost visible
    // child within it, and so on. Unlike for getContainerAt, the point is in the coordinates of the children.
    virtual CView* getViewAt(const CPoint& where, bool deep = false) const;
    // The innermost container at the point, or this one. The point is in the parent's coordinates. Null
    // without a frame.
    virtual CViewContainer* getContainerAt(const CPoint& where, bool deep = true) const;
    void bringViewToFront(CView* view);

    virtual void setBackgroundColor(CColor color);
    virtual CColor getBackgroundColor() const { return backgroundColor; }
    // The point of the background bitmap that is drawn at the container's top left.
    virtual void setBackgroundOffset(const CPoint& offset);
    virtual const CPoint& getBackgroundOffset() const { return backgroundOffset; }
    virtual void drawBackgroundRect(CDrawContext* context, CRect& update);
    // Keeps a flattened picture of the background and of the lowest children that are static, for a container
    // with an opaque background (KeptGround.h). It costs the memory of the frame's picture once more.
    void keepGround(bool flag);
    // The flag is kept and copied, but not used.
    virtual void useOffscreen(bool flag) { offscreen = flag; }
    // Gives the focus to the next view after old that wants it, or, with reverse, to the one before; null for
    // old starts with the first one. False if there is no such view.
    virtual bool advanceNextFocusView(CView* old, bool reverse = false);
    // Asks the window to show the container's part of the picture again, if it is visible.
    virtual void invalid();
    virtual bool invalidateDirtyViews();
    virtual void setSubViewsVisible(bool flag);
    // The part of the rectangle that neither this container nor its ancestors clip. Both rectangles are in
    // the coordinates of the children.
    virtual CRect getVisibleSize(CRect rect) const;
    virtual bool checkUpdateRect(CView* view, const CRect& update);
    // Whether the point, in the parent's coordinates, hits a child with the mouse enabled.
    virtual bool hitTestSubViews(const CPoint& where, long buttons = -1);

    long notify(CBaseObject* sender, const char* message) override;
    void draw(CDrawContext* context) override;
    void drawRect(CDrawContext* context, const CRect& update) override;
    bool isDirty() const override;
    void setVisible(bool flag) override;
    bool holdsMouse() const override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseUp(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseEntered(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseExited(CPoint& where, const long& buttons) override;
    bool onWheel(const CPoint& where, const float& distance, const long& buttons) override;
    bool onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                 const long& buttons) override;
    bool onDrop(CDragContainer* drag, const CPoint& where) override;
    void onDragEnter(CDragContainer* drag, const CPoint& where) override;
    void onDragLeave(CDragContainer* drag, const CPoint& where) override;
    void onDragMove(CDragContainer* drag, const CPoint& where) override;
    long onKeyDown(TovraKeyCode& code) override;
    void setViewSize(const CRect& rect, bool invalidate = true) override;
    using CView::getVisibleSize;
    void parentSizeChanged() override;
    CPoint& frameToLocal(CPoint& point) const override;
    CPoint& localToFrame(CPoint& point) const override;
    void looseFocus() override;
    void takeFocus() override;
    bool removed(CView* parent) override;
    bool attached(CView* parent) override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return new CViewContainer(*this); }
    const char* getClassName() const override { return "CViewContainer"; }
    void childChanged(CView* child) override;
    void applyMarks() override;

    // Casts the view; null if it is not a container.
    static CViewContainer* of(CView* view);

protected:
    // In ChildWalk.h.
    class ChildWalk;

    CPoint toChildren(const CPoint& where) const { return where - size.getTopLeft(); }
    // Whether the child is visible, enabled, has the mouse enabled, and is hit.
    static bool takesMouseAt(CView* child, const CPoint& where, long buttons);
    // Makes the child at the point the one that the mouse is over, and tells both of them.
    void trackMouse(const CPoint& local, const long& buttons);
    // A view that is no child any more counts as null.
    void setMouseDownChild(CView* child) { mouseDownChild = isChild(child) ? child : nullptr; }
    CView* getMouseDownChild() const { return mouseDownChild; }
    void setMouseOverChild(CView* child) { mouseOverChild = isChild(child) ? child : nullptr; }
    CView* getMouseOverChild() const { return mouseOverChild; }
    bool isMarkedDirty() const { return CView::isDirty(); }
    // Where the children's (0, 0) is drawn, in the parent's coordinates.
    CPoint contentOrigin() const;

private:
    bool canTake(CView* view) const;
    void insertChild(CView* view, size_t position);
    void eraseChild(size_t position);
    void dropPointersTo(CView* view);
    void removeChild(CView* view, bool withForget);
    void drawInside(CDrawContext* context);
    bool drawGround(CDrawContext* context);
    void drawBackground(CDrawContext* context);
    // Those that belong to the ground, or those above it.
    enum Layer
    {
        everyChild,
        groundChildren,
        childrenAbove
    };
    void drawChildren(CDrawContext* context, Layer layer);
    static bool isClickTakenByListener(CView* child, const long& buttons);
    bool moveToChildren(const CPoint& local, const long& buttons);
    void leaveDragTarget(CDragContainer* drag, const CPoint& local);
    void enterDragTarget(CView* next, CDragContainer* drag, const CPoint& local);

    std::vector<CView*> children;    // from the lowest; one reference each
    ChildWalk* walks = nullptr;      // those in progress, the innermost first
    CView* mouseOverChild = nullptr; // these three are children or null
    CView* dragTarget = nullptr;
    CView* mouseDownChild = nullptr;
    CColor backgroundColor = kBlackCColor;
    CPoint backgroundOffset;
    bool offscreen = false;
    std::unique_ptr<KeptGround> ground; // null if none is to be kept
};
}
