// SPDX-License-Identifier: GPL-3.0-or-later
// The live text field: a child window over the frame, drawn by the toolkit.
//
// Besides the keys that EditLine knows it takes Control with C, X and V, Insert with Control or shift,
// Delete with shift, double and triple clicks, dragging, and the middle button for what was selected last,
// here or in another program. Keys come from the frame's window, which keeps the focus.
//
// Each of the callback's functions may destroy the field or close the frame.
#pragma once

#include "Tovrane/base/RunLoop.h"
#include "Tovrane/platform/parts/ClickCounter.h"
#include "Tovrane/platform/parts/EditLinePainter.h"
#include "Tovrane/platform/x11/exchange/X11Paste.h"
#include "Tovrane/platform/x11/overlays/X11OverlayHost.h"
#include "Tovrane/platform/x11/surface/X11Canvas.h"
#include "Tovrane/window/IOSTextEdit.h"

#include <memory>

namespace Tovra
{
class ITextEditCallback;

// [window thread]
class X11TextEdit : public IOSTextEdit, private X11EventSink, private FrameOverlay
{
public:
    X11TextEdit(X11OverlayHost& frame, ITextEditCallback& callback);
    ~X11TextEdit() override;

    const char* getText() override;
    bool setText(const char* text) override;
    bool updateSize() override;
    long onKeyDown(TovraKeyCode& code) override;

private:
    void overlayLost() override;
    long overlayKeyDown(const TovraKeyCode& code, const std::string& typed) override;
    void overlayText(const std::string& text) override;
    void overlayFocused(bool isFocused) override;
    // Nothing is shown from here on, and the callback is not called any more.
    void disconnect();

    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    void pressed(const xcb_button_press_event_t& event);
    void dragged(const xcb_motion_notify_event_t& event);
    void endDrag();
    bool command(const TovraKeyCode& code);
    void copy();
    void paste(X11Clipboard::Which from);
    void offerSelection();

    void changed();
    void paint();
    std::size_t positionAt(int x);

    Kept<X11OverlayHost> owner; // null once disconnected
    OverlayHandle handle;
    ITextEditCallback* callback;
    EditLine line{std::size_t(textSize - 1)};
    X11Canvas canvas;
    X11Window window;
    RepeatingTimer blink;
    EditLinePainter painter;
    bool isDragging = false;
    ClickCounter clicks;
    std::unique_ptr<X11Paste> pasting;                     // made when first needed
    std::shared_ptr<bool> life = std::make_shared<bool>(); // expires with the field
};
}
