// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/overlays/X11TextEdit.h"

#include "Tovrane/window/ITextEditCallback.h"

#include <utility>

namespace Tovra
{
namespace
{
constexpr int blinkMilliseconds = 530;
}

X11TextEdit::X11TextEdit(X11OverlayHost& frame, ITextEditCallback& asked)
    : owner(&frame),
      callback(&asked),
      canvas(frame.sharedConnection()),
      window(frame.sharedConnection(), *this, X11Window::child, frame.windowId(), {})
{
    painter.back = asked.textEditGetBackColor();
    painter.font = asked.textEditGetFontColor();
    window.setCursor(window.connection().cursor(X11Cursors::text));
    X11TextEdit::updateSize();
    handle.open(frame.overlays(), *this, OverlayKind::field);
    blink.start(blinkMilliseconds,
                [this]
                {
                    painter.isCaretOn = !painter.isCaretOn;
                    paint();
                });
}

X11TextEdit::~X11TextEdit()
{
    disconnect();
}

void X11TextEdit::disconnect()
{
    if (!owner)
        return;
    blink.stop();
    pasting.reset();
    callback = nullptr;
    window.destroy();
    if (painter.isFocused)
        owner->typingEnded();
    handle.close();
    owner.reset();
}

// The window has gone. The view, which is still there unless the frame is being closed, may delete this.
void X11TextEdit::overlayLost()
{
    ITextEditCallback* const told = owner->getFrame() != nullptr ? callback : nullptr;
    disconnect();
    if (told != nullptr)
        told->textEditLooseFocus(false);
}

const char* X11TextEdit::getText()
{
    return line.text().c_str();
}

bool X11TextEdit::setText(const char* text)
{
    line.setText(text != nullptr ? text : "");
    painter.scrollBack();
    changed();
    return owner && !window.isGone();
}

bool X11TextEdit::updateSize()
{
    if (callback == nullptr || window.isGone())
        return false;
    const ITextEditCallback& asked = *callback;
    CRect field = asked.textEditGetSize();
    CRect seen = asked.textEditGetVisibleSize();
    seen.bound(field);
    asked.convertPluginToWorld(field);
    asked.convertPluginToWorld(seen);
    const bool isSeen = seen.right > seen.left && seen.bottom > seen.top;
    const X11Place whole =
        X11Window::bounded(field.left, field.top, field.right - field.left, field.bottom - field.top);
    const X11Place part =
        X11Window::bounded(seen.left, seen.top, seen.right - seen.left, seen.bottom - seen.top);
    painter.setField(whole.width, whole.height, part.x - whole.x, part.y - whole.y);
    window.setPlace(part);
    canvas.setSize(part.width, part.height);
    if (isSeen)
        window.show();
    else
        window.hide();
    changed();
    return true;
}

void X11TextEdit::overlayFocused(bool focused)
{
    painter.isFocused = focused;
    if (!focused)
        owner->typingEnded();
    changed();
}

// The caret stands still while one types.
void X11TextEdit::changed()
{
    painter.isCaretOn = true;
    paint();
}

void X11TextEdit::paint()
{
    if (!owner || window.isGone())
        return;
    painter.draw(canvas.context(), line);
    canvas.show(window);
    const X11Place& place = window.place();
    if (painter.isFocused && handle.isOpen())
        owner->typeAt(place.x + int(painter.caretX()), place.y + place.height);
}

std::size_t X11TextEdit::positionAt(int x)
{
    return painter.positionAt(canvas.context(), line, x);
}

void X11TextEdit::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    if (!owner)
        return;
    const Kept<X11OverlayHost> alive(owner);
    switch (type)
    {
    case XCB_EXPOSE:
    {
        const auto& part = as<xcb_expose_event_t>(event);
        return canvas.showAgain(window, {part.x, part.y, part.width, part.height});
    }
    case XCB_BUTTON_PRESS:
        return pressed(as<xcb_button_press_event_t>(event));
    case XCB_MOTION_NOTIFY:
        return dragged(as<xcb_motion_notify_event_t>(event));
    case XCB_BUTTON_RELEASE:
        return as<xcb_button_release_event_t>(event).detail == XCB_BUTTON_INDEX_1 ? endDrag() : void();
    case XCB_DESTROY_NOTIFY:
        return overlayLost();
    case XCB_KEY_PRESS: // the mouse is over the field, and a window above ours has the focus
    case XCB_KEY_RELEASE:
        return alive->handleKey(type, event);
    default:
        return;
    }
}

void X11TextEdit::pressed(const xcb_button_press_event_t& event)
{
    const int count = clicks.press(event.detail, event.event_x, event.event_y, event.time);
    handle.raise();
    if (event.detail == XCB_BUTTON_INDEX_2)
    {
        line.moveTo(positionAt(event.event_x), false);
        paste(X11Clipboard::selection);
        return changed();
    }
    if (event.detail != XCB_BUTTON_INDEX_1)
        return;
    owner->takeFocus();
    isDragging = count == 1;
    if (count == 1)
        line.moveTo(positionAt(event.event_x), (event.state & XCB_MOD_MASK_SHIFT) != 0);
    else if (count == 2)
        line.selectWord(positionAt(event.event_x));
    else
        line.selectAll();
    if (count > 1)
        offerSelection();
    changed();
}

void X11TextEdit::dragged(const xcb_motion_notify_event_t& event)
{
    if ((event.state & XCB_BUTTON_MASK_1) == 0)
        return endDrag(); // the release went elsewhere
    if (!isDragging)
        return;
    line.moveTo(positionAt(event.event_x), true);
    changed();
}

void X11TextEdit::endDrag()
{
    if (!std::exchange(isDragging, false))
        return;
    offerSelection();
}
}
