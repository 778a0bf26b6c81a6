// What mouse events carry and what their handlers answer.
//
// A mouse word is the sum of the buttons that are held and the modifier keys. Ahead of dispatch the frame
// turns a left click with control into kButtonRight, and one with command into kButtonMiddle, modifiers
// dropped.
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
constexpr long kDoubleClick = 0x400; // on a press alone

constexpr long kAllModifiers = kModShift | kModCommand | kModAlt | kModControl;

enum MouseEventResult : long
{
    kMouseUnimplemented = 0,
    kMouseHandled = 1,       // of a press: moves and the release come to the same view
    kMouseUnhandled = 2,     // the next view below is asked
    kMouseHandledNoMoves = 3 // the press was taken; neither moves nor the release are wanted
};

enum CMouseWheelAxis : int
{
    kMouseWheelAxisX = 0,
    kMouseWheelAxisY = 1
};
}
