// What a frame asks of a window system: a surface that shows the frame's picture, cursors, a text field,
// menus and file panels. One implementation a window system, in platform/. The surface never paints on its
// own: the frame draws when it is idled, and the surface then shows the whole picture by one blit.
//
// Events go the other way, through WindowEvents. All of it is [window thread]. Points and rectangles are in
// plug-in coordinates, which CFrame::convertPluginToWorld turns into the window's pixels; sizes alone are in
// pixels, as they stand.
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"
#include "Tovrane/window/CCursorType.h"

namespace Tovra
{
class CFrame;
class CView;
class IFileSelector;
class IOptionMenu;
class IOSTextEdit;
class ITextEditCallback;

class IFrame : public CBaseObject
{
public:
    explicit IFrame(CFrame* owner) : frame(owner) {}

    // The top left on the screen; false if it is not known.
    virtual bool getGlobalPosition(CPoint& position) const = 0;
    // Resizes the surface to width and height of the rectangle. False if that is refused.
    virtual bool setSize(const CRect& size) = 0;
    virtual bool getSize(CRect& size) const = 0;
    // False if it is not known.
    virtual bool getCurrentMousePosition(CPoint& position) const = 0;
    // A mouse word; false if it is not known.
    virtual bool getCurrentMouseButtons(long& buttons) const = 0;
    virtual bool setMouseCursor(CCursorType type) = 0;
    // Shows the frame's picture there, soon.
    virtual bool invalidRect(const CRect& rect) = 0;
    // The caller deletes it. Null if there can be none.
    virtual IOSTextEdit* createPlatformTextEdit(CFrame* forFrame, ITextEditCallback* callback,
                                                CView* view) = 0;
    // Both with one reference, the caller's.
    virtual IOptionMenu* createOptionMenu(CFrame* forFrame) = 0;
    // The target of CDrawContext::blit and IOSBitmap::drawToContext.
    virtual void* getSystemWindow() const = 0;
    virtual IFileSelector* createFileSelector(CFrame* forFrame) = 0;

    // The frame's views are about to go: what the mouse holds is released while they are still there.
    virtual void releaseMouse() {}
    // The frame is going: no event may reach it from here on. The surface may outlive it for a while, as long
    // as the window system holds on to it.
    virtual void clearFrame() { frame = nullptr; }

    // The window system's frame, or the fallback's where that one refuses. parent is the host's window, null
    // for none. The caller's reference; never null once a fallback is registered.
    static IFrame* createPlatformFrame(CFrame* frame, const CRect& size, void* parent);

    // What makes frames for a window system; it answers null when it cannot, or when the parent is none of
    // its own. Null takes it out. One a process: the last one set.
    using Factory = IFrame* (*)(CFrame* frame, const CRect& size, void* parent);
    static void setPlatformFactory(Factory factory);
    // What makes a frame that never refuses, with or without a parent: the headless platform registers itself
    // here. It has to be there before the first CFrame is made.
    static void setFallbackFactory(Factory factory);

    // Milliseconds, in steps of a 60 Hz counter.
    static long getTicks();

protected:
    CFrame* frame; // null once it has gone
};
}
