// SPDX-License-Identifier: GPL-3.0-or-later
// What a frame needs from a window system: a surface that shows the frame's picture, cursors, a text field,
// menus and file panels. platform/ has one implementation for each window system. The surface does not draw
// by itself: the frame draws when it is idled, and then asks the surface to show the picture.
//
// A window system passes its events to the frame directly. [window thread] Points and rectangles are in
// units, the plug-in's coordinates, which CFrame::convertPluginToWorld converts to pixels of the window; only
// the sizes of createPlatformFrame, setSize and getSize are in pixels already.
#pragma once

#include "Tovrane/base/CBaseObject.h"
#include "Tovrane/base/CPoint.h"
#include "Tovrane/base/CRect.h"
#include "Tovrane/window/CCursorType.h"

#include <memory>

namespace Tovra
{
class CFrame;
class CView;
class IFileSelector;
class IOptionMenu;
class IOSBitmap;
class IOSTextEdit;
class ITextEditCallback;

class IFrame : public CBaseObject
{
public:
    explicit IFrame(CFrame* owner) : frame(owner) {}

    // The position of the top left on the screen; false if it is not known.
    virtual bool getGlobalPosition(CPoint& position) const = 0;
    // Changes the surface's size to width and height of the rectangle. False if the window system refuses.
    virtual bool setSize(const CRect& size) = 0;
    virtual bool getSize(CRect& size) const = 0;
    // False if it is not known.
    virtual bool getCurrentMousePosition(CPoint& position) const = 0;
    // The buttons and modifiers that are held, as a mouse word; false if they are not known.
    virtual bool getCurrentMouseButtons(long& buttons) const = 0;
    virtual bool setMouseCursor(CCursorType type) = 0;
    // Shows this part of the frame's picture soon.
    virtual bool invalidRect(const CRect& rect) = 0;
    // Makes the frame's picture, without pixels yet: in memory that the window system shows without a copy,
    // if it has such. The frame owns it and draws into it; it may outlive this object.
    virtual std::unique_ptr<IOSBitmap> createPicture();
    // The caller deletes it. Null if there is none.
    virtual IOSTextEdit* createPlatformTextEdit(CFrame* forFrame, ITextEditCallback* callback,
                                                CView* view) = 0;
    // One reference, the caller's. Null if there is none.
    virtual IOptionMenu* createOptionMenu(CFrame* forFrame) = 0;
    // The target of CDrawContext::blit and IOSBitmap::drawToContext: an IBlitTarget*, or null.
    virtual void* getSystemWindow() const = 0;
    // One reference, the caller's. Null if there is none.
    virtual IFileSelector* createFileSelector(CFrame* forFrame) = 0;

    // The desktop's own scale, in pixels of the window to one unit: 0.75 to 4, and 1 if the desktop has none.
    // When it changes, the frame gets notify with desktopScaleChanged.
    virtual double getDesktopScale() const { return 1.0; }
    static const char* const desktopScaleChanged;

    // The frame's views are about to go. While they are still there, an open menu closes without a choice and
    // what the mouse holds is released.
    virtual void releaseMouse() {}
    // The frame is about to be destroyed: it must not get any more events. The surface may outlive it, as
    // long as the window system holds a reference.
    virtual void clearFrame() { frame = nullptr; }

    // Makes a frame of the window system, or of the fallback if the window system has none for this parent.
    // parent is the host's window, or null. One reference, the caller's; never null: without factories the
    // frame has no surface and refuses everything.
    static IFrame* createPlatformFrame(CFrame* frame, const CRect& size, void* parent);

    // Makes frames for a window system, with one reference. Returns null if it cannot, or if parent is not a
    // window of its kind. There is one such factory in the process, the last one set; null removes it.
    using Factory = IFrame* (*)(CFrame* frame, const CRect& size, void* parent);
    static void setPlatformFactory(Factory factory);
    // Makes the frames for which the platform factory returns null, with or without a parent. The headless
    // platform registers itself here, before the first CFrame is made.
    static void setFallbackFactory(Factory factory);

    // Milliseconds, in steps of 1/60 s.
    static long getTicks();

protected:
    CFrame* frame; // null after clearFrame
};
}
