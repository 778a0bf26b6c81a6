// SPDX-License-Identifier: GPL-3.0-or-later
// What comes to a frame from the server, the desktop and the input method, and where it goes.
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/platform/x11/frame/X11Frame.h"
#include "Tovrane/views/tree/CFrame.h"

namespace Tovra
{
void X11Frame::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    const Kept<X11Frame> alive(*this);
    switch (type)
    {
    case XCB_DESTROY_NOTIFY:
        return windowGone();
    case XCB_UNMAP_NOTIFY:
        return hidden();
    case XCB_EXPOSE:
    {
        const auto& part = as<xcb_expose_event_t>(event);
        if (picture != nullptr)
            picture->showAgain(window, {part.x, part.y, part.width, part.height});
        return;
    }
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
        return handleKey(type, event);
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        return keys.focusMoved(type == XCB_FOCUS_IN, as<xcb_focus_in_event_t>(event));
    case XCB_CLIENT_MESSAGE:
        if (const auto& message = as<xcb_client_message_event_t>(event); !dropTarget.handleMessage(message))
            keys.message(message);
        return;
    default:
        return mouseEvent(type, event);
    }
}

void X11Frame::mouseEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    const auto& press = as<xcb_button_press_event_t>(event);
    const auto& entered = as<xcb_enter_notify_event_t>(event);
    switch (type)
    {
    case XCB_BUTTON_PRESS:
        return mouse.pressed(press);
    case XCB_BUTTON_RELEASE:
        return mouse.released(press);
    case XCB_MOTION_NOTIFY:
        return mouse.moved(press.event_x, press.event_y, press.state);
    case XCB_ENTER_NOTIFY: // a move need not follow: the window came to the mouse, or a menu closed over it
        return mouse.moved(entered.event_x, entered.event_y, entered.state);
    case XCB_LEAVE_NOTIFY:
        return mouse.left(entered);
    default:
        return;
    }
}

void X11Frame::releaseMouse()
{
    open.lose(OverlayKind::menu);
    mouse.taken();
}

void X11Frame::hidden()
{
    open.lose(OverlayKind::menu);
    mouse.vanished();
}

// The desktop is the connection's, which a callback may outlive the frame with.
void X11Frame::followDesktop()
{
    X11Desktop& desktop = server->desktop();
    useDesktopsSubpixels();
    desktop.onSettings = [this]
    {
        const Kept<X11Frame> alive(*this);
        useDesktopsSubpixels();
        if (events.isConnected())
            Kept<CFrame>(events.getFrame())->notify(this, desktopScaleChanged);
    };
    desktop.onActiveWindow = [this]
    {
        const Kept<X11Frame> alive(*this);
        if (open.has(OverlayKind::menu) && !server->desktop().isActive(window.id()))
            open.lose(OverlayKind::menu);
    };
}

void X11Frame::useDesktopsSubpixels()
{
    PelmoAGG* const renderer = events.isConnected() ? events.getFrame()->getRenderer() : nullptr;
    const SubpixelOrder order = server->desktop().settings().order;
    if (renderer == nullptr || renderer->subpixelOrder() == order)
        return;
    renderer->subpixelOrder(order);
    events.getFrame()->setDirty(true);
}

// An input method that has died is looked for again when the next field opens.
void X11Frame::typeAt(int x, int y)
{
    if (!isTyping && (method == nullptr || method->isGone()))
        method = openMethod();
    if (method != nullptr)
        method->setSpot(x, y);
    if (method != nullptr && !isTyping)
        method->setFocused(true);
    isTyping = true;
}

std::shared_ptr<X11InputMethod> X11Frame::openMethod()
{
    if (!isOpen())
        return nullptr;
    const auto key = [this](std::uint8_t type, const xcb_generic_event_t& event)
    {
        const Kept<X11Frame> alive(*this);
        keys.handleKey(type, event);
    };
    const auto text = [this](const std::string& made)
    {
        const Kept<X11Frame> alive(*this);
        if (FrameOverlay* const field = open.top(OverlayKind::field))
            field->overlayText(made);
    };
    return X11InputMethod::open(server, window.id(),
                                {key, text, [this](std::uint8_t keycode) { keys.swallow(keycode); }});
}

void X11Frame::typingEnded()
{
    isTyping = false;
    if (method != nullptr)
        method->setFocused(false);
}

void X11Frame::handleKey(std::uint8_t type, const xcb_generic_event_t& event)
{
    const auto asked = method; // a key may be the end of it
    const bool isForField = open.has(OverlayKind::field) && !open.takeInput();
    if (asked != nullptr && (isForField || asked->isBusy()) && asked->take(event))
        return;
    keys.handleKey(type, event);
}
}
