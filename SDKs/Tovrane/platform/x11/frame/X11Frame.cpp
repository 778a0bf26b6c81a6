// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/frame/X11Frame.h"

#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/platform/x11/connection/X11Keys.h"
#include "Tovrane/platform/x11/overlays/X11FileSelector.h"
#include "Tovrane/platform/x11/overlays/X11OptionMenu.h"
#include "Tovrane/platform/x11/overlays/X11TextEdit.h"
#include "Tovrane/views/tree/CFrame.h"

#include <cstdint>
#include <limits>

namespace Tovra
{
namespace
{
CPoint placeOf(std::int16_t x, std::int16_t y)
{
    return CPoint(x, y);
}
}

void useX11Frames()
{
    IFrame::setPlatformFactory(&X11Frame::create);
}

IFrame* X11Frame::create(CFrame* frame, const CRect& size, void* parent)
{
    const auto number = reinterpret_cast<std::uintptr_t>(parent);
    if (number == 0 || number > std::numeric_limits<xcb_window_t>::max())
        return nullptr;
    auto connection = X11Connection::open();
    if (connection == nullptr || !connection->exists(xcb_window_t(number)))
        return nullptr;
    auto* made = new X11Frame(frame, std::move(connection), size, xcb_window_t(number));
    if (!made->window.isGone())
        return made;
    made->forget();
    return nullptr;
}

X11Frame::X11Frame(CFrame* owner, std::shared_ptr<X11Connection> connection, const CRect& size,
                   xcb_window_t host)
    : IFrame(owner),
      server(std::move(connection)),
      events(owner),
      window(server, *this, X11Window::child, host,
             X11Window::bounded(0.0, 0.0, size.right - size.left, size.bottom - size.top)),
      foreign(server),
      dropTarget(*this, window, events),
      keys(window, host, events, open),
      mouse(window, events, open, keys)
{
    if (window.isGone())
        return;
    constexpr std::uint32_t versionAndMapped[] = {0, 1};
    const xcb_atom_t info = server->atom(X11Atom::xembedInfo);
    window.setProperty(info, info, versionAndMapped, 2);
    dropTarget.announce();
    followDesktop();
    window.show();
}

// The desktop is the connection's, which a callback may outlive the frame with.
void X11Frame::followDesktop()
{
    X11Desktop& desktop = server->desktop();
    useDesktopsSubpixels();
    desktop.onSettings = [this]
    {
        const Kept<X11Frame> alive(this);
        useDesktopsSubpixels();
        if (events.isConnected())
            Kept<CFrame>(events.getFrame())->notify(this, desktopScaleChanged);
    };
    desktop.onActiveWindow = [this]
    {
        const Kept<X11Frame> alive(this);
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

double X11Frame::getDesktopScale() const
{
    return server->desktop().settings().scale;
}

X11Frame::~X11Frame()
{
    X11Frame::clearFrame();
}

void X11Frame::clearFrame()
{
    server->desktop().onSettings = nullptr;
    server->desktop().onActiveWindow = nullptr;
    events.disconnect();
    windowGone();
    window.destroy();
    picture = nullptr;
    IFrame::clearFrame();
}

void X11Frame::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    const Kept<X11Frame> alive(this);
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

// Menus, panels, drags and text fields end with it.
void X11Frame::windowGone()
{
    hidden();
    dropTarget.leave();
    if (method != nullptr)
        method->stop();
    open.shut();
}

bool X11Frame::getGlobalPosition(CPoint& position) const
{
    if (window.isGone())
        return false;
    const auto asked = xcb_translate_coordinates(server->xcb(), window.id(), server->screen().root, 0, 0);
    const auto reply = server->reply(xcb_translate_coordinates_reply, asked);
    if (reply == nullptr)
        return false;
    position = placeOf(reply->dst_x, reply->dst_y);
    return true;
}

CPoint X11Frame::toScreen(CPoint point) const
{
    if (events.isConnected())
        events.getFrame()->convertPluginToWorld(point);
    CPoint origin;
    getGlobalPosition(origin);
    return CPoint(origin.x + point.x, origin.y + point.y);
}

double X11Frame::scale() const
{
    CRect unit(0.0, 0.0, 1.0, 1.0);
    if (events.isConnected())
        events.getFrame()->convertPluginToWorld(unit);
    const double pixels = unit.right - unit.left;
    return pixels >= 0.5 && pixels <= 8.0 ? pixels : 1.0;
}

bool X11Frame::setSize(const CRect& size)
{
    if (window.isGone())
        return false;
    window.setPlace(X11Window::bounded(window.place().x, window.place().y, size.right - size.left,
                                       size.bottom - size.top));
    return true;
}

bool X11Frame::getSize(CRect& size) const
{
    size = CRect(0.0, 0.0, window.place().width, window.place().height);
    return !window.isGone();
}

bool X11Frame::getCurrentMousePosition(CPoint& position) const
{
    const auto reply = mouse.ask();
    if (reply == nullptr || !reply->same_screen)
        return false;
    position = placeOf(reply->win_x, reply->win_y);
    if (events.isConnected())
        events.getFrame()->convertWorldToPlugin(position);
    return true;
}

bool X11Frame::getCurrentMouseButtons(long& word) const
{
    const auto reply = mouse.ask();
    if (reply == nullptr)
        return false;
    word = mouseWordOfState(reply->mask);
    return true;
}

bool X11Frame::setMouseCursor(CCursorType type)
{
    window.setCursor(server->cursor(type));
    return !window.isGone();
}

void* X11Frame::getSystemWindow() const
{
    return static_cast<IBlitTarget*>(const_cast<X11Frame*>(this));
}

std::unique_ptr<IOSBitmap> X11Frame::createPicture()
{
    auto made = std::make_unique<X11Picture>(server);
    picture = made.get();
    return made;
}

bool X11Frame::invalidRect(const CRect& rect)
{
    if (!isOpen() || picture == nullptr)
        return false;
    const double pixels = events.getFrame()->getScale();
    CRect part(rect.left * pixels, rect.top * pixels, rect.right * pixels, rect.bottom * pixels);
    part.roundOut();
    picture->show(window, X11Window::bounded(part.left, part.top, part.getWidth(), part.getHeight()));
    return true;
}

void X11Frame::blit(const BlitPicture& shown, const CRect& target)
{
    const X11Place place =
        X11Window::bounded(target.left, target.top, target.right - target.left, target.bottom - target.top);
    if (picture != nullptr && shown.pixels == picture->getPixelPtr())
        picture->show(window, picture->whole());
    else
        foreign.show(window, shown, place);
}

IOSTextEdit* X11Frame::createPlatformTextEdit(CFrame*, ITextEditCallback* callback, CView*)
{
    if (!isOpen() || callback == nullptr)
        return nullptr;
    return new X11TextEdit(*this, *callback);
}

IOptionMenu* X11Frame::createOptionMenu(CFrame*)
{
    return new X11OptionMenu(*this);
}

IFileSelector* X11Frame::createFileSelector(CFrame*)
{
    return new X11FileSelector(*this);
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
        const Kept<X11Frame> alive(this);
        keys.handleKey(type, event);
    };
    const auto text = [this](const std::string& made)
    {
        const Kept<X11Frame> alive(this);
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

X11Clipboard& X11Frame::clipboard()
{
    if (shared == nullptr)
        shared = std::make_unique<X11Clipboard>(server);
    return *shared;
}
}
