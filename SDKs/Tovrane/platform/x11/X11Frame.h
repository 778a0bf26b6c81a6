// A frame's window inside of a window of the host's, on X.
//
// The host's window is named by its number, as hosts hand it over. If the host speaks XEmbed, that decides
// about the focus; else a click takes it. Keys that no view wants go on to the host's window.
//
// When the host destroys its window, ours goes with it, without a word: then everything here does nothing,
// until the frame is closed.
#pragma once

#include "Tovrane/base/Kept.h"
#include "Tovrane/draw/IBlitTarget.h"
#include "Tovrane/platform/parts/ClickCounter.h"
#include "Tovrane/platform/parts/WindowEvents.h"
#include "Tovrane/platform/x11/X11Clipboard.h"
#include "Tovrane/platform/x11/X11Drop.h"
#include "Tovrane/platform/x11/X11Surface.h"
#include "Tovrane/platform/x11/X11Window.h"
#include "Tovrane/window/IFrame.h"

#include <memory>
#include <vector>

namespace Tovra
{
class X11OptionMenu;
class X11TextEdit;

// [window thread]
class X11Frame : public IFrame, public IBlitTarget, private X11EventSink
{
public:
    // As IFrame::Factory has it: null without a display, or if parent is no window there.
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
    void clearFrame() override;

    void blit(const BlitPicture& picture, const CRect& target) override;

    // For the parts of a frame: its menu and its text field.
    const std::shared_ptr<X11Connection>& sharedConnection() const { return server; }
    xcb_window_t windowId() const { return window.id(); }
    X11Clipboard& clipboard();
    // Pixels of the window to those of the plug-in.
    double scale() const;
    // From plug-in coordinates to the screen's.
    CPoint toScreen(CPoint point) const;
    void takeFocus();
    // Its keys come to the text field as well.
    void handleKey(std::uint8_t type, const xcb_generic_event_t& event);

    // One menu at a time; false if it may not open.
    bool beginMenu(X11OptionMenu& opened);
    void endMenu() { menu = nullptr; }
    // While a panel of another program is open: no clicks and keys come in.
    bool beginPanel();
    void endPanel() { isBlocked = false; }
    CFrame* getFrame() const { return events.getFrame(); }
    // Of several text fields that are open the one that was made or clicked last gets the keys; when it goes,
    // the one before it does.
    void beginTextEdit(X11TextEdit& made);
    void endTextEdit(X11TextEdit& gone);
    X11TextEdit* activeTextEdit() const { return fields.empty() ? nullptr : fields.back(); }
    // False once the frame or the window has gone.
    bool isOpen() const { return events.isConnected() && !window.isGone(); }

protected:
    ~X11Frame() override;

private:
    X11Frame(CFrame* owner, std::shared_ptr<X11Connection> connection, const CRect& size, xcb_window_t host);

    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    void pressed(const xcb_button_press_event_t& event);
    void released(const xcb_button_release_event_t& event);
    void moved(const xcb_motion_notify_event_t& event);
    void keyPressed(const xcb_key_press_event_t& event);
    void passOn(const xcb_key_press_event_t& event);
    void message(const xcb_client_message_event_t& event);
    void sendToEmbedder(std::uint32_t request);
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
    X11OptionMenu* menu = nullptr; // open
    std::vector<X11TextEdit*> fields; // open; the last one gets the keys
    ClickCounter clicks;
    bool isBlocked = false;
    bool isFocused = true;
    xcb_window_t embedder = 0; // that has spoken XEmbed
};

// [window thread]  From here on frames with a parent window are made on X, where there is one.
void useX11Frames();
}
