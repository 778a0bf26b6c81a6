// SPDX-License-Identifier: GPL-3.0-or-later
// The arguments of mouse events, and what their handlers return.
//
// A mouse word is the sum of the buttons that are held and the modifier keys. Before the views get a left
// click, the frame replaces one with control by kButtonRight, and one with command by kButtonMiddle, without
// modifiers. The moves and the release that follow have the same button.
#pragma once

namespace Tovra
{
constexpr long kButtonLeft = 2;
constexpr long kButtonMiddle = 4;
constexpr long kButtonRight = 8;
constexpr long kModShift = 16;
constexpr long kModCommand = 32;
constexpr long kModAlt = 64;
constexpr long kModControl = 128;
constexpr long kButton4 = 0x100;
constexpr long kButton5 = 0x200;
constexpr long kDoubleClick = 0x400; // only for a press

constexpr long kAllModifiers = kModShift | kModCommand | kModAlt | kModControl;

enum MouseEventResult : long
{
    kMouseUnimplemented = 0,
    kMouseHandled = 1,       // after a press: this view gets the moves and the release, too
    kMouseUnhandled = 2,     // the next view below gets the event
    kMouseHandledNoMoves = 3 // the press was handled; neither moves nor the release are wanted
};

enum CMouseWheelAxis : int
{
    kMouseWheelAxisX = 0,
    kMouseWheelAxisY = 1
};
}
