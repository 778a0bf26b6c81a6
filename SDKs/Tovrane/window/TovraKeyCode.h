// SPDX-License-Identifier: GPL-3.0-or-later
// A key event for views: a printing key has a character, any other key a number.
#pragma once

#include "CORE/KeyCode.h"

namespace Tovra
{
using TovraKeyCode = Core::KeyCode; // its modifiers are KeyModifier bits

enum KeyModifier : std::uint8_t
{
    kKeyShift = 1,
    kKeyAlt = 2,
    kKeyCommand = 4,
    kKeyControl = 8
};

enum VirtualKey : std::uint8_t
{
    kVirtualBackspace = 1,
    kVirtualTab = 2,
    kVirtualClear = 3,
    kVirtualReturn = 4,
    kVirtualPause = 5,
    kVirtualEscape = 6,
    kVirtualSpace = 7,
    kVirtualNext = 8,
    kVirtualEnd = 9,
    kVirtualHome = 10,
    kVirtualLeft = 11,
    kVirtualUp = 12,
    kVirtualRight = 13,
    kVirtualDown = 14,
    kVirtualPageUp = 15,
    kVirtualPageDown = 16,
    kVirtualSelect = 17,
    kVirtualPrint = 18,
    kVirtualKeypadEnter = 19,
    kVirtualInsert = 21,
    kVirtualDelete = 22,
    kVirtualHelp = 23,
    kVirtualKeypad0 = 24, // up to 33 for 9
    kVirtualKeypadMultiply = 34,
    kVirtualKeypadAdd = 35,
    kVirtualKeypadSubtract = 37,
    kVirtualKeypadDecimal = 38,
    kVirtualKeypadDivide = 39,
    kVirtualF1 = 40 // up to 51 for F12
};

// The answers of key handlers.
constexpr long kKeyConsumed = 1;
constexpr long kKeyNotHandled = -1;
}
