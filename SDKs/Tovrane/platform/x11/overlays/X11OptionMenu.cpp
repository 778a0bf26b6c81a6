// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/overlays/X11OptionMenu.h"

#include "Tovrane/platform/x11/connection/X11Event.h"

#include <cstdlib>
#include <utility>

namespace Tovra
{
namespace
{
constexpr int tickMilliseconds = 30;
constexpr int grabMilliseconds = 10;
constexpr int mostGrabs = 10;     // in 100 ms: a window manager may hold the mouse for a moment after a click
constexpr int hoverTicks = 6;     // until the submenu of a row opens, so that the way to one may cross others
constexpr int dragDistance = 4;   // pixels; below it a click was just not quite still
constexpr int wheelDistance = 44; // two rows
constexpr int stripDistance = 11;
constexpr int wheelUp = 4;
constexpr int wheelDown = 5;
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

void X11OptionMenu::tick()
{
    if (deepest().isObscured()) // the others may lie below their own submenu
        return cancel();
    if (const int level = levelAt(mouseX, mouseY); level >= 0)
        panels[std::size_t(level)]->scroll(panels[std::size_t(level)]->scrollsAt(mouseX, mouseY) *
                                           int(stripDistance * scale));
    if (waitingTicks > 0 && --waitingTicks == 0)
        openBelow(waitingLevel);
}

void X11OptionMenu::handleEvent(std::uint8_t type, const xcb_generic_event_t& event)
{
    if (!done)
        return;
    const Kept<X11OptionMenu> alive(this);
    const auto& mouse = as<xcb_button_press_event_t>(event);
    switch (type)
    {
    case XCB_MOTION_NOTIFY:
        return moved(mouse.root_x, mouse.root_y);
    case XCB_BUTTON_PRESS:
        return pressed(mouse.detail, mouse.root_x, mouse.root_y);
    case XCB_BUTTON_RELEASE:
        return released(mouse.detail, mouse.root_x, mouse.root_y);
    case XCB_KEY_PRESS:
        owner->swallowKey(mouse.detail);
        return keyPressed(server->keyboard().press(mouse.detail, mouse.state).code);
    case XCB_KEY_RELEASE: // of a key that was pressed before the menu opened, too
        return owner->handleKey(type, event);
    case XCB_UNMAP_NOTIFY:
    case XCB_DESTROY_NOTIFY:
        return cancel();
    default:
        for (const auto& panel : panels)
            if (panel->window().id() == windowOfEvent(type, event))
                panel->handleEvent(type, event);
    }
}

int X11OptionMenu::levelAt(int x, int y) const
{
    for (int level = int(panels.size()) - 1; level >= 0; --level)
        if (panels[std::size_t(level)]->contains(x, y))
            return level;
    return -1;
}

void X11OptionMenu::moved(int x, int y)
{
    hasMoved = hasMoved || std::abs(x - openedX) >= dragDistance || std::abs(y - openedY) >= dragDistance;
    mouseX = x;
    mouseY = y;
    const int level = levelAt(x, y);
    if (level >= 0)
        hover(std::size_t(level), panels[std::size_t(level)]->rowAt(x, y));
    else if (panels.back()->marked() >= 0 && waitingTicks == 0)
        deepest().mark(-1);
}

void X11OptionMenu::hover(std::size_t level, int row)
{
    X11MenuPanel& panel = *panels[level];
    const bool changes = row != panel.marked();
    panel.mark(row);
    if (level + 1 < panels.size())
        deepest().mark(-1);
    if (changes)
    {
        waitingLevel = level;
        waitingTicks = hoverTicks;
    }
    // The mouse has arrived in a submenu: the rows that it crossed on its way there don't count.
    if (level > 0 && waitingTicks > 0 && waitingLevel < level)
        waitingTicks = 0;
    for (std::size_t above = 0; above < level; ++above)
        panels[above]->mark(panels[above + 1]->openedBy());
}

void X11OptionMenu::pressed(int button, int x, int y)
{
    const int level = levelAt(x, y);
    if (button == wheelUp || button == wheelDown)
    {
        if (level >= 0)
            panels[std::size_t(level)]->scroll((button == wheelUp ? -1 : 1) * int(wheelDistance * scale));
        return moved(x, y);
    }
    wasPressed = true;
    if (level < 0)
        cancel();
    else
        moved(x, y);
}

void X11OptionMenu::released(int button, int x, int y)
{
    const int level = levelAt(x, y);
    if (button == wheelUp || button == wheelDown || level < 0 || (!wasPressed && !hasMoved))
        return;
    moved(x, y);
    choose(std::size_t(level));
}

// The marked row.
void X11OptionMenu::choose(std::size_t level)
{
    const X11MenuPanel& panel = *panels[level];
    const int row = panel.marked();
    if (row < 0 || !panel.rows()[row].isReachable())
        return;
    if (panel.rows()[row].kind == MenuRow::submenu)
        return openBelow(level);
    finish({&panel.rows().menu(), panel.rows()[row].index});
}

// The submenu of the marked row, in place of another one that is open there.
void X11OptionMenu::openBelow(std::size_t level)
{
    waitingTicks = 0;
    if (level >= panels.size())
        return;
    X11MenuPanel& panel = *panels[level];
    const int row = panel.marked();
    if (level + 1 < panels.size() && panels[level + 1]->openedBy() == row)
        return;
    closeBelow(level);
    if (row < 0 || !panel.rows()[row].isReachable() || panel.rows()[row].kind != MenuRow::submenu)
        return;
    const X11Place& place = panel.window().place();
    const int top = panel.topOf(row) - int(MenuRows::margin * scale);
    panels.push_back(std::make_unique<X11MenuPanel>(server, sink(), *panel.rows()[row].below, scale,
                                                    place.x + place.width - 1, top, place.width - 2));
    deepest().setOpenedBy(row);
}

void X11OptionMenu::closeBelow(std::size_t level)
{
    panels.resize(std::min(panels.size(), level + 1));
}

void X11OptionMenu::stepTo(int row)
{
    waitingTicks = 0;
    if (row >= 0)
        deepest().mark(row);
}

long X11OptionMenu::overlayKeyDown(const TovraKeyCode& code, const std::string&)
{
    const Kept<X11OptionMenu> alive(this);
    keyPressed(code);
    return kKeyConsumed;
}

void X11OptionMenu::keyPressed(const TovraKeyCode& code)
{
    const MenuRows& rows = deepest().rows();
    const int marked = deepest().marked();
    const std::size_t level = panels.size() - 1;
    switch (code.virtualKey)
    {
    case kVirtualDown:
        return stepTo(rows.step(marked, true));
    case kVirtualUp:
        return stepTo(rows.step(marked, false));
    case kVirtualHome:
        return stepTo(rows.step(-1, true));
    case kVirtualEnd:
        return stepTo(rows.step(-1, false));
    case kVirtualRight:
        openBelow(level);
        if (panels.size() > level + 1)
            stepTo(deepest().rows().step(-1, true));
        return;
    case kVirtualLeft:
        return level > 0 ? closeBelow(level - 1) : void();
    case kVirtualEscape:
        return cancel();
    case kVirtualReturn:
    case kVirtualKeypadEnter:
    case kVirtualSpace:
        choose(level);
        if (panels.size() > level + 1)
            stepTo(deepest().rows().step(-1, true));
        return;
    default:
        if (code.character > 0 && code.character < 0x80)
            stepTo(rows.beginningWith(char(code.character), marked));
    }
}
}
