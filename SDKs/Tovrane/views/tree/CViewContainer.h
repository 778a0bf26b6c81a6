// A view that holds views, draws them in the order in which they were added, and hands events to them, the
// topmost first. Children lie in its coordinates: (0, 0) is its own top left.
//
// A child may take itself or others out of the tree in the midst of any walk over the children: walks hold
// what they call, and step over what has gone. What is added during a walk from below is still visited.
//
// All of it is [window thread].
#pragma once

#include "Tovrane/draw/CColor.h"
#include "Tovrane/views/tree/CView.h"

#include <vector>

namespace Tovra
{
class CViewContainer : public CView
{
public:
    explicit CViewContainer(const CRect& rect, CBitmap* bitmap = nullptr);
    // Children are copied too.
    CViewContainer(const CViewContainer& other);
    ~CViewContainer() override;

    // On top of the others; the caller's reference passes to the container. False for null, and for a view
    // that is attached or here already.
    virtual bool addView(CView* view);
    virtual bool addView(CView* view, const CRect& mouseableArea, bool mouseEnabled);
    // Below before, or on top if that is no child. Unlike the others it does not attach the view, which thus
    // has no frame until its container is attached anew.
    virtual bool addView(CView* view, CView* before);
    // Without withForget the container's reference passes back to the caller. If view is no child, all
    // children are dropped as they are, and the answer is false.
    virtual bool removeView(CView* view, const bool& withForget = true);
    virtual bool removeAll(const bool& withForget = true);
    // Direct children alone.
    virtual bool isChild(CView* view) const;
    virtual long getNbViews() const { return long(children.size()); }
    // From below; null out of range.
    virtual CView* getView(long index) const;
    // The topmost visible child at the point, null for none, and with deep the same within that child. The
    // point is in the coordinates of the children, other than that of getContainerAt.
    virtual CView* getViewAt(const CPoint& where, bool deep = false) const;
    // The innermost container at the point, which is in the parent's coordinates: this one at least. Null
    // without a frame.
    virtual CViewContainer* getContainerAt(const CPoint& where, bool deep = true) const;
    void bringViewToFront(CView* view);

    virtual void setBackgroundColor(CColor color);
    virtual CColor getBackgroundColor() const { return backgroundColor; }
    // Where in the background bitmap the container's top left lies.
    virtual void setBackgroundOffset(const CPoint& offset) { backgroundOffset = offset; }
    virtual const CPoint& getBackgroundOffset() const { return backgroundOffset; }
    virtual void drawBackgroundRect(CDrawContext* context, CRect& update);
    // Kept and copied; drawing does not depend on it.
    virtual void useOffscreen(bool flag) { offscreen = flag; }
    // The next view, or the one ahead, that wants the focus gets it; from the start for a null old. False
    // behind the last one.
    virtual bool advanceNextFocusView(CView* old, bool reverse = false);
    // Shows the container's part of the picture again, if it is visible.
    virtual void invalid();
    virtual bool invalidateDirtyViews();
    virtual void setSubViewsVisible(bool flag);
    // From the coordinates of the children and back into them: what is left of the rectangle behind this
    // container's edges and those of its ancestors.
    virtual CRect getVisibleSize(CRect rect) const;
    virtual bool checkUpdateRect(CView* view, const CRect& update);
    // Whether a child with the mouse enabled is hit. In the parent's coordinates.
    virtual bool hitTestSubViews(const CPoint& where, long buttons = -1);

    long notify(CBaseObject* sender, const char* message) override;
    void draw(CDrawContext* context) override;
    void drawRect(CDrawContext* context, const CRect& update) override;
    bool isDirty() const override;
    void setVisible(bool flag) override;
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
    void applyMarks() override;

    // The view as a container, null if it is none.
    static CViewContainer* of(CView* view);

protected:
    // In ChildWalk.h.
    class ChildWalk;

    CPoint toChildren(const CPoint& where) const { return where - size.getTopLeft(); }
    // Visible, hit and enabled, and takes the mouse.
    static bool takesMouseAt(CView* child, const CPoint& where, long buttons);
    // The child under the point becomes the one that the mouse is over.
    void trackMouse(const CPoint& local, const long& buttons);
    // What is no child any more is not taken.
    void setMouseDownChild(CView* child) { mouseDownChild = isChild(child) ? child : nullptr; }
    CView* getMouseDownChild() const { return mouseDownChild; }
    void setMouseOverChild(CView* child) { mouseOverChild = isChild(child) ? child : nullptr; }
    CView* getMouseOverChild() const { return mouseOverChild; }
    bool isMarkedDirty() const { return CView::isDirty(); }

private:
    bool canTake(CView* view) const;
    void insertChild(CView* view, size_t position);
    void eraseChild(size_t position);
    void dropPointersTo(CView* view);
    void removeChild(CView* view, bool withForget);
    void drawInside(CDrawContext* context, const CRect& update);
    void drawChildren(CDrawContext* context, const CRect& clip, const CRect& update);
    static bool isClickTakenByListener(CView* child, const long& buttons);
    bool moveToChildren(const CPoint& local, const long& buttons);
    void leaveDragTarget(CDragContainer* drag, const CPoint& local);
    void enterDragTarget(CView* next, CDragContainer* drag, const CPoint& local);

    std::vector<CView*> children;    // from below; one reference each
    ChildWalk* walks = nullptr;      // those under way, the innermost first
    CView* mouseOverChild = nullptr; // these three are children, or null
    CView* dragTarget = nullptr;
    CView* mouseDownChild = nullptr;
    CColor backgroundColor = kBlackCColor;
    CPoint backgroundOffset;
    bool offscreen = false;
};
}
