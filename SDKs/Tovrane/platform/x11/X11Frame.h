// SPDX-License-Identifier: GPL-3.0-or-later
// A frame's window inside of a window of the host's, on X.
//
// Hosts name their window by its number. If the host speaks XEmbed, it decides about the keyboard's focus; if
// not, a click takes the focus. Keys that no view wants go on to the host's window, press and release alike.
//
// When the host destroys its window, the server destroys ours with it; and when the connection breaks, no
// window is left either. From then on everything here does nothing and answers false until the frame is
// closed.
#pragma once

#include "Tovrane/base/Kept.h"
#include "Tovrane/draw/IBlitTarget.h"
#include "Tovrane/platform/parts/ClickCounter.h"
#include "Tovrane/platform/parts/FrameOverlays.h"
#include "Tovrane/platform/parts/HeldKeys.h"
#include "Tovrane/platform/parts/WindowEvents.h"
#include "Tovrane/platform/x11/X11Clipboard.h"
#include "Tovrane/platform/x11/X11Drop.h"
#include "Tovrane/platform/x11/X11Surface.h"
#include "Tovrane/platform/x11/X11Window.h"
#include "Tovrane/window/IFrame.h"

#include <memory>

namespace Tovra
{
// [window thread]
class X11Frame : public IFrame, public IBlitTarget, private X11EventSink
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
    IOSTextEdit* createPlatformTextEdit(CFrame* forFrame, ITextEditCallback* callback, CView* view) override;
    IOptionMenu* createOptionMenu(CFrame* forFrame) override;
    void* getSystemWindow() const override;
    IFileSelector* createFileSelector(CFrame* forFrame) override;
    void releaseMouse() override;
    void clearFrame() override;

    void blit(const BlitPicture& picture, const CRect& target) override;

    // For the parts of a frame: its menu, its text fields and its file panel.
    const std::shared_ptr<X11Connection>& sharedConnection() const { return server; }
    xcb_window_t windowId() const { return window.id(); }
    X11Clipboard& clipboard();
    // Pixels of the window to one unit of the plug-in's.
    double scale() const;
    // From plug-in coordinates to the screen's.
    CPoint toScreen(CPoint point) const;
    void takeFocus();
    // For keys that came to a text field's or a menu's window instead of this one.
    void handleKey(std::uint8_t type, const xcb_generic_event_t& event);
    CFrame* getFrame() const { return events.getFrame(); }
    // False once the frame or the window has gone.
    bool isOpen() const { return events.isConnected() && !window.isGone(); }

    // What lies over this frame. It is shut once the frame is closed or its window has gone.
    FrameOverlays& overlays() { return open; }
    // A menu takes the mouse for itself: views that hold it get their releases.
    void mouseTaken();
    // It has closed. If the mouse is over the frame, an EnterNotify will say so.
    void mouseGivenBack();
    // The menu took the press of this key: its release is nobody's.
    void swallowKey(std::uint8_t key) { keys.press(key, KeyTaker::swallowed); }

protected:
    ~X11Frame() override;

private:
    X11Frame(CFrame* owner, std::shared_ptr<X11Connection> connection, const CRect& size, xcb_window_t host);

    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    void pressed(const xcb_button_press_event_t& event);
    void released(const xcb_button_release_event_t& event);
    void moved(int x, int y, std::uint16_t state);
    void left(const xcb_leave_notify_event_t& event);
    void hidden();
    bool isViewable() const;

    KeyTaker keyPressed(const xcb_key_press_event_t& event);
    void keyReleased(const xcb_key_release_event_t& event);
    void passOn(const xcb_key_press_event_t& event);
    void message(const xcb_client_message_event_t& event);
    void sendToEmbedder(std::uint32_t request);
    void focusMoved(bool isHere, const xcb_focus_in_event_t& event);
    void setFocused(bool focused);
    void windowGone();
    X11Reply<xcb_query_pointer_reply_t> pointer() const;

    const std::shared_ptr<X11Connection> server;
    const xcb_window_t parent;
    WindowEvents events;
    X11Window window;
    X11Surface surface;
    X11Drop dropTarget;
    std::unique_ptr<X11Clipboard> shared;
    FrameOverlays open;
    ClickCounter clicks;
    HeldKeys keys;
    long heldBeyondState = 0;  // buttons that are held and that the state of an event has no bit for
    xcb_window_t embedder = 0; // the parent, once it has spoken XEmbed
};

// [window thread]  From here on frames with a parent window are made on X, where there is a display.
void useX11Frames();
}
