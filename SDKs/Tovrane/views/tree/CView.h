// SPDX-License-Identifier: GPL-3.0-or-later
// A rectangle in a tree of views, which draws itself and handles events. The root of the tree is a CFrame.
//
// A view's rectangle is in its parent's coordinates. A new view is detached and has one reference, which
// passes to the container to which it is added. It is attached while that container is, directly or
// indirectly, in a frame.
//
// setDirty only tells the frame which rectangle has to be drawn; the frame draws when it is idled.
//
// All of it is [window thread], except for what the listener of a parameter calls, on whichever thread wrote
// the parameter: setDirty, setVisible and setEnabled. On any thread but the one that made or attached the
// view they only set flags, without a lock or an allocation, and the frame's next idle does the rest.
#pragma once

#include "CORE/Relaxed.h"
#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/window/MouseEvents.h"
#include "Tovrane/window/TovraKeyCode.h"

#include <atomic>
#include <thread>

namespace Tovra
{
class CBitmap;
class CDragContainer;
class CDrawContext;
class CFrame;
class IFrameEditor;

// The message to which CBaseObject::notify of a container answers 1.
extern const char* const kMsgCheckIfViewContainer;

// Unlike CRect::pointInside, it includes the right and bottom edges.
bool isWithinEdges(const CRect& rect, const CPoint& point);

class CView : public CBaseObject
{
public:
    explicit CView(const CRect& rect);
    // The copy is detached and shares the background.
    CView(const CView& other);
    ~CView() override;

    // Draws the view, dirty or not. The base class draws the background and clears the dirty flag.
    virtual void draw(CDrawContext* context);
    virtual void drawRect(CDrawContext* context, const CRect& update);
    // Whether the rectangle, in the parent's coordinates, meets or touches the view's.
    virtual bool checkUpdate(const CRect& update) const;

    virtual bool isDirty() const { return dirty; }
    // [any thread]  With true the visible part of the view is drawn at the next idle.
    virtual void setDirty(bool flag);
    // Asks the window to show a part of the finished picture again, in the view's own coordinates. Draws
    // nothing.
    virtual void invalidRect(CRect rect);
    // [any thread]  Both mark the view as dirty, even if nothing changes.
    virtual void setVisible(bool flag);
    virtual void setEnabled(bool flag);
    // Whether the flag is set, some of the view lies inside its parent, and the parent is visible.
    bool isVisible() const;
    bool isEnabled() const { return enabled; }

    // Points are in the parent's coordinates. The result decides which view gets the next events.
    virtual MouseEventResult onMouseDown(CPoint& where, const long& buttons);
    virtual MouseEventResult onMouseUp(CPoint& where, const long& buttons);
    virtual MouseEventResult onMouseMoved(CPoint& where, const long& buttons);
    virtual MouseEventResult onMouseEntered(CPoint& where, const long& buttons);
    virtual MouseEventResult onMouseExited(CPoint& where, const long& buttons);
    // Whether the mouse belongs to a gesture of this view, or of one inside it, which only the release of its
    // own button ends: until then presses and releases of other buttons reach no other view.
    virtual bool holdsMouse() const { return false; }
    // Whether the point is inside the mouseable area, all four edges included. buttons is -1 outside of
    // events.
    virtual bool hitTest(const CPoint& where, long buttons = -1);
    // distance is in notches, up is positive. True if the view used it.
    virtual bool onWheel(const CPoint& where, const float& distance, const long& buttons);
    // The base class calls the form without axis, with the opposite sign for the X axis without shift.
    virtual bool onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                         const long& buttons);
    virtual void setMouseWheelState(bool active) { wheelActive = active; }
    virtual bool isWheelActive() const { return wheelActive; }
    virtual void setMouseEnabled(bool flag) { mouseEnabled = flag; }
    virtual bool getMouseEnabled() const { return mouseEnabled; }
    // In the parent's coordinates; setViewSize does not change it.
    virtual void setMouseableArea(const CRect& area) { mouseableArea = area; }
    virtual void getMouseableArea(CRect& area) const { area = mouseableArea; }
    virtual const CRect& getMouseableArea() const { return mouseableArea; }

    // True if the view accepted what was dropped.
    virtual bool onDrop(CDragContainer* drag, const CPoint& where);
    virtual void onDragEnter(CDragContainer* drag, const CPoint& where);
    virtual void onDragLeave(CDragContainer* drag, const CPoint& where);
    virtual void onDragMove(CDragContainer* drag, const CPoint& where);

    // After kKeyNotHandled the next view gets the key.
    virtual long onKeyDown(TovraKeyCode& code);
    virtual long onKeyUp(TovraKeyCode& code);

    // With invalidate both the old and the new rectangle are drawn again. Does not change the mouseable area.
    virtual void setViewSize(const CRect& rect, bool invalidate = true);
    virtual void getViewSize(CRect& rect) const { rect = size; }
    virtual const CRect& getViewSize() const { return size; }
    // The part of the view that its ancestors do not clip, in the parent's coordinates. Empty without a
    // frame.
    virtual CRect getVisibleSize() const;
    virtual void parentSizeChanged() {}
    // Convert between the coordinates of the frame and those of the parent.
    virtual CPoint& frameToLocal(CPoint& point) const;
    virtual CPoint& localToFrame(CPoint& point) const;

    virtual void looseFocus() {}
    virtual void takeFocus() {}
    virtual bool wantsFocus() const { return focusWanted; }
    virtual void setWantsFocus(bool flag) { focusWanted = flag; }

    // The view keeps a reference; null for none.
    virtual void setBackground(CBitmap* bitmap);
    virtual CBitmap* getBackground() const { return background.get(); }
    // Promises that what the view draws stays the same until it is marked as dirty, so that its container may
    // keep the pixels (CViewContainer::keepGround).
    void setStatic(bool flag) { isStaticFlag = flag; }
    bool isStatic() const { return isStaticFlag; }
    // Whether the background is drawn with drawTransparent instead of draw.
    virtual void setTransparency(bool flag) { transparent = flag; }
    virtual bool getTransparency() const { return transparent; }

    // Called by containers. False if the view is already in that state.
    virtual bool removed(CView* parent);
    virtual bool attached(CView* parent);
    virtual void setParentView(CView* parent) { parentView = parent; }
    virtual void setFrame(CFrame* next);
    CView* getParentView() const { return parentView; }
    CFrame* getFrame() const { return frame; }
    bool isAttached() const { return attachedFlag; }

    // Null without a frame.
    virtual IFrameEditor* getEditor() const;
    // Whether the text is the name of the class or of one of its base classes.
    virtual bool isTypeOf(const char* name) const;
    // A detached copy with one reference; null for classes that cannot be copied.
    virtual CView* newCopy() const { return new CView(*this); }
    virtual const char* getClassName() const { return "CView"; }
    // In hertz; 44100 without a frame or an editor.
    virtual double getSampleRate() const;

    // A view inside, at any depth, has been marked as dirty: child, or one inside it. Null stands for this
    // view itself.
    virtual void childChanged(CView* child);

    // Does the rest of setDirty for calls on other threads, in this view and those inside it. The frame calls
    // it.
    virtual void applyMarks();
    // The number of such calls so far, in all views of the process; wraps around.
    static unsigned countMarks();

protected:
    // Whether this is the thread that made the view, or attached it since.
    bool isOnOwnThread() const;
    void setDirtyFlag(bool flag) { dirty = flag; }
    void setAttachedFlag(bool flag) { attachedFlag = flag; }

    CRect size;

private:
    void addDirtyRect();

    CRect mouseableArea;
    Core::Relaxed<bool> dirty = false; // these three are written by any thread
    Core::Relaxed<bool> visible = true;
    Core::Relaxed<bool> enabled = true;
    std::atomic<bool> marked = false;         // set by any thread, cleared by the window thread
    Core::Relaxed<std::thread::id> ownThread; // written by the window thread
    bool mouseEnabled = true;
    bool transparent = false;
    bool isStaticFlag = false;
    bool focusWanted = false;
    bool attachedFlag = false;
    bool wheelActive = true;
    Kept<CBitmap> background;
    CFrame* frame = nullptr; // holds a reference, unless this view is the frame
    CView* parentView = nullptr;
};
}
