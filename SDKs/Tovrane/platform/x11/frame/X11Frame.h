// SPDX-License-Identifier: GPL-3.0-or-later
// A frame's window inside of a window of the host's, on X.
//
// Hosts name their window by its number. X11FrameMouse and X11FrameKeys take what the user does with it.
//
// When the host destroys its window, the server destroys ours with it; and when the connection breaks, no
// window is left either. From then on everything here does nothing and answers false until the frame is
// closed.
#pragma once

#include "Tovrane/base/Kept.h"
#include "Tovrane/draw/IBlitTarget.h"
#include "Tovrane/platform/x11/exchange/X11Drop.h"
#include "Tovrane/platform/x11/frame/X11FrameKeys.h"
#include "Tovrane/platform/x11/frame/X11FrameMouse.h"
#include "Tovrane/platform/x11/overlays/X11InputMethod.h"
#include "Tovrane/platform/x11/overlays/X11OverlayHost.h"
#include "Tovrane/platform/x11/surface/X11Surface.h"
#include "Tovrane/window/IFrame.h"

#include <memory>

namespace Tovra
{
// [window thread]
class X11Frame : public IFrame, public IBlitTarget, public X11OverlayHost, private X11EventSink
{
public:
    // An IFrame::Factory. Null without a display, on a screen that cannot show our pictures (see
    // X11Connection::open), or if parent is no window there.
    static IFrame* create(CFrame* frame, const CRect& size, void* parent);

    bool getGlobalPosition(CPoint& position) const override;
    bool setSize(const CRect& size) override;
    bool getSize(CRect& size) const override;
    bool getCurrentMousePosition(CPoint& position) const override;
    bool getCurrentMouseButtons(long& buttons) const override;
    bool setMouseCursor(CCursorType type) override;
    bool invalidRect(const CRect& rect) override;
    std::unique_ptr<IOSBitmap> createPicture() override;
    IOSTextEdit* createPlatformTextEdit(CFrame* forFrame, ITextEditCallback* callback, CView* view) override;
    IOptionMenu* createOptionMenu(CFrame* forFrame) override;
    void* getSystemWindow() const override;
    IFileSelector* createFileSelector(CFrame* forFrame) override;
    double getDesktopScale() const override;
    void releaseMouse() override;
    void clearFrame() override;

    void blit(const BlitPicture& picture, const CRect& target) override;

    void remember() override { IFrame::remember(); }
    void forget() override { IFrame::forget(); }
    FrameOverlays& overlays() override { return open; }
    // False once the frame is closed or the window has gone.
    bool isOpen() const override { return events.isConnected() && !window.isGone(); }
    CFrame* getFrame() const override { return events.getFrame(); }
    const std::shared_ptr<X11Connection>& sharedConnection() const override { return server; }
    xcb_window_t windowId() const override { return window.id(); }
    X11Clipboard& clipboard() override;
    double scale() const override;
    CPoint toScreen(CPoint point) const override;
    void takeFocus() override { keys.takeFocus(); }
    void typeAt(int x, int y) override;
    void typingEnded() override;
    void handleKey(std::uint8_t type, const xcb_generic_event_t& event) override;
    void swallowKey(std::uint8_t key) override { keys.swallow(key); }
    void mouseTaken() override { mouse.taken(); }
    void mouseGivenBack() override { mouse.givenBack(); }

protected:
    ~X11Frame() override;

private:
    X11Frame(CFrame* owner, std::shared_ptr<X11Connection> connection, const CRect& size, xcb_window_t host);

    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    void mouseEvent(std::uint8_t type, const xcb_generic_event_t& event);
    void followDesktop();
    void useDesktopsSubpixels();
    std::shared_ptr<X11InputMethod> openMethod();
    void hidden();
    void windowGone();

    const std::shared_ptr<X11Connection> server;
    WindowEvents events;
    X11Window window;
    X11Picture* picture = nullptr; // the frame's, until that is gone
    X11Surface foreign;            // for what is no picture of the frame's
    X11Drop dropTarget;
    std::unique_ptr<X11Clipboard> shared; // made when first needed
    FrameOverlays open;
    X11FrameKeys keys;
    X11FrameMouse mouse;
    std::shared_ptr<X11InputMethod> method; // null until a field has the keyboard, and if the user has none
    bool isTyping = false;                  // a field has it
};

// [window thread]  From here on frames with a parent window are made on X, where there is a display.
void useX11Frames();
}
