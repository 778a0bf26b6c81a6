// SPDX-License-Identifier: GPL-3.0-or-later
// The root of a tree of views: owns the picture into which all of them draw, collects what is dirty, paints
// when it is idled, and gets every event of the window.
//
// The editor makes it for the host's window and owns its first reference. Every attached view holds another
// one, so close() or removeAll() has to be called before the last forget.
//
// All of it is [window thread]. Points and rectangles are in units, the plug-in's coordinates, also those of
// events. Only the picture, setSize's window and what getSize answers are in pixels: getScale() of them to a
// unit.
#pragma once

#include "CORE/CriticalSection.h"
#include "Tovrane/views/tree/CDirtyRectHelper.h"
#include "Tovrane/views/tree/CViewContainer.h"
#include "Tovrane/views/tree/FrameTasks.h"
#include "Tovrane/window/CCursorType.h"

#include <functional>
#include <memory>

namespace Orbel
{
class ParameterProperty;
}

namespace Tovra
{
class IFileSelector;
class IFrame;
class IFrameEditor;
class IOptionMenu;
class IOSBitmap;
class IOSTextEdit;
class ITextEditCallback;
class PelmoAGG;

class CFrame : public CViewContainer
{
public:
    // systemWindow is the host's window, or null. editor may be null; it has to outlive the events of the
    // frame, and the scale of its conversions is the frame's. The picture is as large as the frame at its
    // scale, rounded up, but at most maxPictureSide pixels wide and high.
    CFrame(const CRect& rect, void* systemWindow, IFrameEditor* editor);
    CFrame(const CFrame&) = delete;
    ~CFrame() override;

    static constexpr double maxPictureSide = 4096.0;

    // A length in pixels, rounded up. A product that lies a rounding error above a whole number is that
    // number.
    static double wholePixels(double units, double scale);

    // Pixels to a unit; without an editor 1 at first. Renews the picture and the size of the window. An
    // editor calls it when its own scale has changed, to the same value. From 1/4 to 8; others are ignored.
    void setScale(double pixelsPerUnit);
    double getScale() const;

    // Removes the modal view, removes and forgets all other views, and closes the window and what is open
    // over it, even if an event or a menu still holds a reference to the frame.
    virtual void close();
    // Does the tasks that were posted (FrameTasks), collects what other threads have marked as dirty, and
    // paints.
    virtual void idle();
    // Does the tasks alone.
    void doTasks();
    // Draws what is dirty into the frame's picture and asks the window to show that.
    void paint();
    virtual void doIdleStuff() {}
    // Milliseconds.
    virtual long getTicks() const;
    // Always false: the host's window determines the position.
    virtual bool setPosition(double x, double y);
    // The position on the screen; false, and (0, 0), if it is not known.
    virtual bool getPosition(double& x, double& y) const;
    // Changes the size of the window, given in units, but not the frame's own rectangle, which setViewSize
    // changes.
    virtual bool setSize(double width, double height);
    // The size of the window, in pixels.
    virtual bool getSize(CRect* rect) const;
    virtual bool getSize(CRect& rect) const;
    // Adds a view on top of the others that gets all mouse events. Null removes the modal view without
    // forgetting it. False if there is a modal view already, or if the view is attached.
    virtual bool setModalView(CView* view);
    virtual CView* getModalView() const { return modalView.get(); }
    // Like setModalView, but the view is the frame's alone: however it is removed, it is forgotten, also by
    // setModalView(nullptr) and when the frame closes. If the result is false it is still the caller's.
    bool adoptModalView(CView* view);
    // Passed on to the editor, for the host's automation.
    virtual void beginEdit(Orbel::ParameterProperty* property);
    virtual void endEdit(Orbel::ParameterProperty* property);
    virtual void performEdit(Orbel::ParameterProperty* property);
    // The position of the last event; (-1, -1) before the first one.
    virtual const CPoint& getLastMousePosition() const { return lastMousePosition; }
    virtual bool getCurrentMouseLocation(CPoint& where) const;
    // What the window tells, or, if it does not know, the buttons of the last event.
    virtual long getCurrentMouseButtons() const;
    virtual bool setCursor(CCursorType type);
    // During this call the focus cannot be set again, in any frame, so that looseFocus cannot interfere.
    virtual void setFocusView(CView* view);
    virtual CView* getFocusView() const { return focusView.get(); }
    // Whether the view with the focus shows it: from the moment when Tab moves the focus until a click.
    bool showsFocus() const { return focusShown; }
    // A view calls this when it is removed from the tree.
    virtual void onViewRemoved(CView* view);
    virtual void invalidate(const CRect&) {}
    // One reference, the caller's; null if there is none.
    virtual IOptionMenu* createOptionMenu();
    // The caller deletes it; null if there is none.
    virtual IOSTextEdit* createOSTextEdit(ITextEditCallback* callback, CView* view);
    // For a line of text about what is under the mouse.
    virtual void setDataReadOutText(const char*) {}
    // In beats a minute; -1 without an editor.
    virtual double getEffectTempo() const;

    // Marks a part of the frame as dirty, with all pixels that it touches. When there are 64 already, the
    // whole frame becomes dirty.
    void addDirtyRect(const CRect& rect, CView* view = nullptr);
    // Converts from the coordinates in which view is drawn, those of its parent, to those of the frame.
    void localRectToFrameRect(CView* view, CRect& rect) const;
    IFrame* getOSFrame() const { return platformFrame.get(); }
    // One reference each, the caller's; the file selector may be null.
    CDrawContext* createDrawContext();
    IFileSelector* createFileSelector();
    // Convert between the pixels of the window and the frame's coordinates, as the editor does it.
    void convertWorldToPlugin(CPoint& point) const;
    void convertPluginToWorld(CPoint& point) const;
    void convertPluginToWorld(CRect& rect) const;

    // A child that stays above the views that are added later, until it is removed; null for none.
    void setTopView(CView* view) { topView = view; }
    CView* getTopView() const { return topView; }

    // Who decides about the scale listens here: the window system's own scale has changed; a right click came
    // that no view took.
    std::function<void()> onDesktopScale;
    std::function<void(const CPoint&)> onGroundMenu;

    PelmoAGG* getRenderer() const { return renderer.get(); }
    IOSBitmap* getFrameBitmap() const { return frameBitmap.get(); }
    void* getSystemWindow() const { return systemWindow; }
    const CDirtyRectHelper& getDirtyRects() const { return dirtyRects; }
    // How often all of the frame has been painted; wraps around.
    unsigned countFullPaints() const { return fullPaints; }

    void draw(CDrawContext* context) override;
    void drawRect(CDrawContext* context, const CRect& update) override;
    // The frame's own flag, whatever its children are.
    bool isDirty() const override { return isMarkedDirty(); }
    void setDirty(bool flag) override { setDirtyFlag(flag); }
    // Shows the whole frame, whatever the rectangle is.
    void invalidRect(CRect rect) override;
    void invalid() override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseUp(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& buttons) override;
    // The pointer has left the window: the view that it was over is told, and unless a view holds the mouse,
    // which still gets the moves of its drag, the cursor is the arrow again and the read-out empty.
    MouseEventResult onMouseExited(CPoint& where, const long& buttons) override;
    bool onWheel(const CPoint& where, const float& distance, const long& buttons) override;
    bool onWheel(const CPoint& where, const CMouseWheelAxis& axis, const float& distance,
                 const long& buttons) override;
    long onKeyDown(TovraKeyCode& code) override;
    long onKeyUp(TovraKeyCode& code) override;
    void setViewSize(const CRect& rect, bool invalidate = true) override;
    bool addView(CView* view) override;
    bool addView(CView* view, const CRect& mouseableArea, bool mouseEnabled) override;
    bool addView(CView* view, CView* before) override;
    bool removeView(CView* view, const bool& withForget = true) override;
    bool removeAll(const bool& withForget = true) override;
    bool advanceNextFocusView(CView* old, bool reverse = false) override;
    void remember() override { CViewContainer::remember(); }
    long notify(CBaseObject* sender, const char* message) override;
    IFrameEditor* getEditor() const override { return editor; }
    bool isTypeOf(const char* name) const override;
    // A frame is not copied.
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "CFrame"; }

private:
    void fitPicture();
    // In pixels.
    CRect windowSize(const CRect& rect) const;
    // In units; it may be a part of a pixel larger than the frame.
    CRect wholePicture() const;
    void dropTopView();
    void showFocus(bool flag);
    void dropFocusOutside(const CPoint& where, const long& buttons);
    MouseEventResult clickModalView(CPoint& where, const long& buttons);
    MouseEventResult clickGround(const CPoint& where, long buttons);
    template <typename Call>
    bool wheelTo(const CPoint& where, const long& buttons, Call call);
    bool advanceFromChild(CView* child, bool reverse);
    bool advanceFromDepth(CView* old, bool reverse);
    void noteMouse(const CPoint& where, long buttons);
    long asPressed(long buttons) const;
    void drawDirty(CDrawContext* context);
    void showDrawn();
    bool drawPart(CDrawContext* given, const CRect& rect);

    void* systemWindow;
    IFrameEditor* editor;
    Kept<CView> modalView;
    bool isModalViewOwned = false; // it was adopted
    Kept<CView> focusView;
    std::unique_ptr<IOSBitmap> frameBitmap;
    std::unique_ptr<PelmoAGG> renderer;
    CDirtyRectHelper dirtyRects; // to be drawn at the next paint
    CDirtyRectHelper drawRects;  // being drawn now
    CDirtyRectHelper drawnRects; // by the last drawing
    Kept<IFrame> platformFrame;
    CPoint lastMousePosition{-1.0, -1.0};
    long lastMouseButtons = 0;
    long leftStandsFor = 0; // the button as which the press of the left one counted; 0 for itself
    CView* topView = nullptr;
    unsigned fullPaints = 0;
    bool focusShown = false;
    unsigned appliedMarks = 0; // countMarks() when marks were last collected
    Core::Threads::CriticalSection drawLock;
    FrameTasks tasks{*this};
};
}
