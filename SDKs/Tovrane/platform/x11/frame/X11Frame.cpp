// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/frame/X11Frame.h"

#include "Tovrane/draw/IOSBitmap.h"
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

X11Clipboard& X11Frame::clipboard()
{
    if (shared == nullptr)
        shared = std::make_unique<X11Clipboard>(server);
    return *shared;
}
}
