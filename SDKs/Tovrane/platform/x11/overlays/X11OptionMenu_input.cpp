// SPDX-License-Identifier: GPL-3.0-or-later
// What the mouse and keys do to an open menu.
#include "Tovrane/platform/x11/overlays/X11OptionMenu.h"

#include <algorithm>
#include <cstdlib>

namespace Tovra
{
namespace
{
constexpr int hoverTicks = 6;     // until the submenu of a row opens, so that the way to one may cross others
constexpr int dragDistance = 4;   // pixels; below it a click was just not quite still
constexpr int wheelDistance = 44; // two rows
constexpr int stripDistance = 11;
constexpr int wheelUp = 4;
constexpr int wheelDown = 5;
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
