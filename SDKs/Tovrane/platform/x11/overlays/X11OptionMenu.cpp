// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/overlays/X11OptionMenu.h"

#include <utility>

namespace Tovra
{
namespace
{
constexpr int tickMilliseconds = 30;
constexpr int grabMilliseconds = 10;
constexpr int mostGrabs = 10; // in 100 ms: a window manager may hold the mouse for a moment after a click
}

void X11OptionMenu::openMenu(IMenu& menu, Done answer)
{
    const Kept<X11OptionMenu> alive(this);
    owner->mouseTaken(); // the views may do anything
    if (!handle.open(owner->overlays(), *this, OverlayKind::menu))
        return answer({});
    if (!show(menu))
    {
        panels.clear();
        handle.close();
        return answer({});
    }
    done = std::move(answer);
    shown.reset(menu.countedObject());
    self.reset(this);
    ticker.start(tickMilliseconds, [this] { tick(); });
    takeInputSoon();
    server->dispatchSoon(); // what came with the replies
}

// False if the server has gone.
bool X11OptionMenu::show(IMenu& menu)
{
    server = owner->sharedConnection();
    scale = owner->scale();
    wasPressed = hasMoved = false;
    waitingTicks = 0;
    const CPoint place = owner->toScreen(menu.getMenuPosition());
    const X11Place at = X11Window::bounded(place.x, place.y, 1.0, 1.0);
    panels.push_back(std::make_unique<X11MenuPanel>(server, sink(), menu, scale, at.x, at.y));
    notePointer();
    return server->isAlive() && !panels.front()->window().isGone();
}

// All that is left to do is done before the answer, which may open the next menu or close the frame.
void X11OptionMenu::finish(const MenuChoice& choice)
{
    if (!done)
        return;
    const Kept<X11OptionMenu> alive(this);
    const Kept<CBaseObject> menu(shown);
    const Kept<CBaseObject> submenu(choice.menu != nullptr ? choice.menu->countedObject() : nullptr);
    const Done answer = std::exchange(done, nullptr);
    ticker.stop();
    grabber.stop();
    panels.clear();
    xcb_ungrab_pointer(server->xcb(), XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(server->xcb(), XCB_CURRENT_TIME);
    server->flush();
    handle.close();
    self.reset();
    shown.reset();
    owner->mouseGivenBack();
    answer(owner->isOpen() ? choice : MenuChoice());
}

void X11OptionMenu::notePointer()
{
    const auto asked = xcb_query_pointer(server->xcb(), server->screen().root);
    const auto pointer = server->reply(xcb_query_pointer_reply, asked);
    if (pointer == nullptr)
        return;
    openedX = mouseX = pointer->root_x;
    openedY = mouseY = pointer->root_y;
}

// Now, or else in a moment.
void X11OptionMenu::takeInputSoon()
{
    grabs = 1;
    if (takeInput())
        return;
    grabber.start(grabMilliseconds,
                  [this]
                  {
                      if (takeInput())
                          grabber.stop();
                      else if (++grabs > mostGrabs)
                          cancel();
                  });
}

// Everything comes to the first panel's window, in the screen's coordinates. False while another client has
// the mouse or the keyboard.
bool X11OptionMenu::takeInput()
{
    xcb_connection_t* c = server->xcb();
    const xcb_window_t window = panels.front()->window().id();
    constexpr std::uint16_t events =
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;
    const auto mouse = xcb_grab_pointer(c, 0, window, events, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, 0,
                                        server->cursor(kCursorDefault), XCB_CURRENT_TIME);
    const auto keys =
        xcb_grab_keyboard(c, 0, window, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const auto gotMouse = server->reply(xcb_grab_pointer_reply, mouse);
    const auto gotKeys = server->reply(xcb_grab_keyboard_reply, keys);
    return gotMouse != nullptr && gotMouse->status == XCB_GRAB_STATUS_SUCCESS && gotKeys != nullptr &&
           gotKeys->status == XCB_GRAB_STATUS_SUCCESS;
}
}
