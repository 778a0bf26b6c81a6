// The root of a tree of views: owns the picture into which all of them draw, gathers what is dirty, paints
// when it is idled, and takes every event of the window.
//
// The editor makes it with the host's window and owns its first reference; each attached view holds another.
// So close() (or removeAll) comes before the last forget.
//
// All of it is [window thread]. Points and rectangles are in plug-in coordinates.
#pragma once

#include "CORE/CriticalSection.h"
#include "Tovrane/views/tree/CDirtyRectHelper.h"
#include "Tovrane/views/tree/CViewContainer.h"
#include "Tovrane/window/CCursorType.h"

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
    // systemWindow: the host's window, null for none. editor may be null and has to outlive the frame's
    // events. The picture is as large as the frame, but at most maxPictureSide pixels either way.
    CFrame(const CRect& rect, void* systemWindow, IFrameEditor* editor);
    CFrame(const CFrame&) = delete;
    ~CFrame() override;

    static constexpr double maxPictureSide = 4096.0;

    // Takes the tree down: every view is removed and forgotten, the modal view removed. The window goes with
    // it, and what is open over it, also when an event or a menu still holds the frame.
    virtual void close();
    // Collects what was marked on other threads, and paints.
    virtual void idle();
    // Draws what is dirty into the frame's picture, and asks the window to show it.
    void paint();
    virtual void doIdleStuff() {}
    // Milliseconds.
    virtual long getTicks() const;
    // A frame is where its parent window puts it: always false.
    virtual bool setPosition(double x, double y);
    // On the screen; false, and (0, 0), if it is not known.
    virtual bool getPosition(double& x, double& y) const;
    // Resizes the window. The frame's own rectangle changes in setViewSize alone.
    virtual bool setSize(double width, double height);
    // The window's.
    virtual bool getSize(CRect* rect) const;
    virtual bool getSize(CRect& rect) const;
    // A view that gets all mouse events, on top of the others; null removes the present one, without
    // forgetting it. False if there is one already, or the view is attached somewhere.
    virtual bool setModalView(CView* view);
    virtual CView* getModalView() const { return modalView.get(); }
    // To the editor, for the host's automation.
    virtual void beginEdit(Orbel::ParameterProperty* property);
    virtual void endEdit(Orbel::ParameterProperty* property);
    virtual void performEdit(Orbel::ParameterProperty* property);
    // Of the last event; (-1, -1) before the first.
    virtual const CPoint& getLastMousePosition() const { return lastMousePosition; }
    virtual bool getCurrentMouseLocation(CPoint& where) const;
    // As the window tells, or else those of the last event.
    virtual long getCurrentMouseButtons() const;
    virtual bool setCursor(CCursorType type);
    // A looseFocus that comes from in here can't set the focus itself, in any frame.
    virtual void setFocusView(CView* view);
    virtual CView* getFocusView() const { return focusView.get(); }
    // A view was taken out of the tree.
    virtual void onViewRemoved(CView* view);
    virtual void invalidate(const CRect&) {}
    // The caller's reference; null if there is none.
    virtual IOptionMenu* createOptionMenu();
    // The caller deletes it; null if there is none.
    virtual IOSTextEdit* createOSTextEdit(ITextEditCallback* callback, CView* view);
    // For a line of text that tells what is under the mouse.
    virtual void setDataReadOutText(const char*) {}
    // Beats a minute; -1 without an editor.
    virtual double getEffectTempo() const;

    // A part of the frame that has to be drawn anew. Beyond 64 of them everything is.
    void addDirtyRect(const CRect& rect, CView* view = nullptr);
    // From the coordinates that view lies in.
    void localRectToFrameRect(CView* view, CRect& rect) const;
    IFrame* getOSFrame() const { return platformFrame.get(); }
    // The caller's reference.
    CDrawContext* createDrawContext();
    IFileSelector* createFileSelector();
    // Between the window's pixels and the frame; both unchanged without an editor.
    void convertWorldToPlugin(CPoint& point) const;
    void convertPluginToWorld(CPoint& point) const;
    void convertPluginToWorld(CRect& rect) const;

    // A view that stays above all others that are added with addView; null for none. It has to be a child.
    void setTopView(CView* view) { topView = view; }
    CView* getTopView() const { return topView; }

    PelmoAGG* getRenderer() const { return renderer.get(); }
    IOSBitmap* getFrameBitmap() const { return frameBitmap.get(); }
    void* getSystemWindow() const { return systemWindow; }
    const CDirtyRectHelper& getDirtyRects() const { return dirtyRects; }

    void draw(CDrawContext* context) override;
    void drawRect(CDrawContext* context, const CRect& update) override;
    // The frame's own flag alone.
    bool isDirty() const override { return isMarkedDirty(); }
    void setDirty(bool flag) override { setDirtyFlag(flag); }
    // The whole frame, whatever the rectangle.
    void invalidRect(CRect rect) override;
    void invalid() override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseUp(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& buttons) override;
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
    IFrameEditor* getEditor() const override { return editor; }
    bool isTypeOf(const char* name) const override;
    // A frame is not copied.
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "CFrame"; }

private:
    void fitPicture();
    void dropFocusOutside(const CPoint& where, const long& buttons);
    MouseEventResult clickModalView(CPoint& where, const long& buttons);
    template <typename Call>
    bool wheelTo(const CPoint& where, const long& buttons, Call call);
    bool advanceFromChild(CView* child, bool reverse);
    bool advanceFromDepth(CView* old, bool reverse);
    void noteMouse(const CPoint& where, long buttons);
    bool drawDirty(CDrawContext* context);
    bool drawPart(CDrawContext* given, CRect rect);

    void* systemWindow;
    IFrameEditor* editor;
    Kept<CView> modalView;
    Kept<CView> focusView;
    std::unique_ptr<IOSBitmap> frameBitmap;
    std::unique_ptr<PelmoAGG> renderer;
    CDirtyRectHelper dirtyRects; // waiting to be drawn
    CDirtyRectHelper drawRects;  // being drawn
    Kept<IFrame> platformFrame;
    CPoint lastMousePosition{-1.0, -1.0};
    long lastMouseButtons = 0;
    CView* topView = nullptr;
    unsigned appliedMarks = 0; // of countMarks
    Core::Threads::CriticalSection drawLock;
};
}
