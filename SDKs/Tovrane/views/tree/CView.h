// A rectangle in a tree of views, which draws itself and takes events. Its root is a CFrame.
//
// A view's rectangle is in its parent's coordinates. A new view is detached and has one reference; adding it
// to a container passes that reference on, and attaches the view as soon as the container hangs in a frame.
//
// Painting is pulled: setDirty tells the frame which rectangle to draw, and the frame draws when it is idled.
//
// All of it is [window thread], but for what a parameter's listener needs, on whichever thread the parameter
// was written: setDirty, setVisible and setEnabled. Off the thread that made or attached the view they only
// set flags, without lock or allocation, and the frame's next idle does the rest.
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

// CBaseObject::notify of a container answers 1 to it.
extern const char* const kMsgCheckIfViewContainer;

// Unlike CRect::pointInside it takes right and bottom edge in.
bool isWithinEdges(const CRect& rect, const CPoint& point);

class CView : public CBaseObject
{
public:
    explicit CView(const CRect& rect);
    // A detached copy that shares the background.
    CView(const CView& other);
    ~CView() override;

    // Draws the view, whatever is dirty. The base draws the background bitmap and is clean then.
    virtual void draw(CDrawContext* context);
    virtual void drawRect(CDrawContext* context, const CRect& update);
    // Whether the rectangle touches the view's, edges included. In the parent's coordinates.
    virtual bool checkUpdate(const CRect& update) const;

    virtual bool isDirty() const { return dirty; }
    // [any thread]  true: what is visible of the view is drawn at the next idle.
    virtual void setDirty(bool flag);
    // Asks to show that part of the finished picture again; nothing is drawn. In the view's own coordinates.
    virtual void invalidRect(CRect rect);
    // [any thread]  Both make the view dirty, changed or not.
    virtual void setVisible(bool flag);
    virtual void setEnabled(bool flag);
    // The flag, and that some of the view lies within its parent, which is visible itself.
    bool isVisible() const;
    bool isEnabled() const { return enabled; }

    // Points are in the parent's coordinates. What they answer decides where the next events go.
    virtual MouseEventResult onMouseDown(CPoint& where, const long& buttons);
    virtual MouseEventResult onMouseUp(CPoint& where, const long& buttons);
    virtual MouseEventResult onMouseMoved(CPoint& where, const long& buttons);
    virtual MouseEventResult onMouseEntered(CPoint& where, const long& buttons);
    virtual MouseEventResult onMouseExited(CPoint& where, const long& buttons);
    // Inside the mouseable area, all four edges included. buttons is -1 where no event asks.
    virtual bool hitTest(const CPoint& where, long buttons = -1);
    // In notches, up positive. True if the view took them.
    virtual bool onWheel(const CPoint& where, const float& distance, const long& buttons);
    // The base hands it on to the form without axis, with the sign turned for X without shift.
    virtual bool onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                         const long& buttons);
    virtual void setMouseWheelState(bool active) { wheelActive = active; }
    virtual bool isWheelActive() const { return wheelActive; }
    virtual void setMouseEnabled(bool flag) { mouseEnabled = flag; }
    virtual bool getMouseEnabled() const { return mouseEnabled; }
    // In the parent's coordinates; it does not follow the view's size.
    virtual void setMouseableArea(const CRect& area) { mouseableArea = area; }
    virtual void getMouseableArea(CRect& area) const { area = mouseableArea; }
    virtual const CRect& getMouseableArea() const { return mouseableArea; }

    // True if the view took what was dropped.
    virtual bool onDrop(CDragContainer* drag, const CPoint& where);
    virtual void onDragEnter(CDragContainer* drag, const CPoint& where);
    virtual void onDragLeave(CDragContainer* drag, const CPoint& where);
    virtual void onDragMove(CDragContainer* drag, const CPoint& where);

    // kKeyNotHandled passes the key on to the next view.
    virtual long onKeyDown(TovraKeyCode& code);
    virtual long onKeyUp(TovraKeyCode& code);

    // With invalidate both the old place and the new one are drawn. The mouseable area stays.
    virtual void setViewSize(const CRect& rect, bool invalidate = true);
    virtual void getViewSize(CRect& rect) const { rect = size; }
    virtual const CRect& getViewSize() const { return size; }
    // What of the view is not cut off by its ancestors, in the parent's coordinates. Empty without a frame.
    virtual CRect getVisibleSize() const;
    virtual void parentSizeChanged() {}
    // Between the frame's coordinates and those that the view lies in.
    virtual CPoint& frameToLocal(CPoint& point) const;
    virtual CPoint& localToFrame(CPoint& point) const;

    virtual void looseFocus() {}
    virtual void takeFocus() {}
    virtual bool wantsFocus() const { return focusWanted; }
    virtual void setWantsFocus(bool flag) { focusWanted = flag; }

    // Remembered here; null for none.
    virtual void setBackground(CBitmap* bitmap);
    virtual CBitmap* getBackground() const { return background.get(); }
    // Selects drawTransparent over draw for the background.
    virtual void setTransparency(bool flag) { transparent = flag; }
    virtual bool getTransparency() const { return transparent; }

    // Called by containers. False if the view is in that state already.
    virtual bool removed(CView* parent);
    virtual bool attached(CView* parent);
    virtual void setParentView(CView* parent) { parentView = parent; }
    virtual void setFrame(CFrame* next);
    CView* getParentView() const { return parentView; }
    CFrame* getFrame() const { return frame; }
    bool isAttached() const { return attachedFlag; }

    // Null without a frame.
    virtual IFrameEditor* getEditor() const;
    // The class's name, or one of its bases', compared as text.
    virtual bool isTypeOf(const char* name) const;
    // A detached copy with one reference. Null for classes that are not copied.
    virtual CView* newCopy() const { return new CView(*this); }
    virtual const char* getClassName() const { return "CView"; }
    // In hertz; 44100 without a frame or an editor.
    virtual double getSampleRate() const;

    // Makes up for setDirty off the window thread, here and in all views within. The frame calls it.
    virtual void applyMarks();
    // How often that happened so far, in all views of the process; wraps.
    static unsigned countMarks();

protected:
    // On the thread to which the view belongs: that which made it, or attached it since.
    bool isOnOwnThread() const;
    void setDirtyFlag(bool flag) { dirty = flag; }
    void setAttachedFlag(bool flag) { attachedFlag = flag; }

    CRect size;

private:
    void addDirtyRect();

    CRect mouseableArea;
    Core::Relaxed<bool> dirty = false; // these three written by any thread
    Core::Relaxed<bool> visible = true;
    Core::Relaxed<bool> enabled = true;
    std::atomic<bool> marked = false;         // set by any thread, cleared by the window's
    Core::Relaxed<std::thread::id> ownThread; // written by the window thread
    bool mouseEnabled = true;
    bool transparent = false;
    bool focusWanted = false;
    bool attachedFlag = false;
    bool wheelActive = true;
    Kept<CBitmap> background;
    CFrame* frame = nullptr; // counted, unless it is this view
    CView* parentView = nullptr;
};
}
