// SPDX-License-Identifier: GPL-3.0-or-later
// From the key symbols, modifiers and buttons of X to those that views know. No server is asked: these are
// tables. All of it is [any thread].
#pragma once

#include "Tovrane/window/TovraKeyCode.h"

#include <cstdint>

namespace Tovra
{
// The number (VirtualKey) of a key that isn't a plain character; 0 for all others.
std::uint8_t virtualKeyOfKeysym(std::uint32_t keysym);

// character is what the key types, 0 for nothing. A key that has a number gets no character, and control
// characters do not count as characters.
TovraKeyCode keyCodeOfKeysym(std::uint32_t keysym, std::uint32_t character, std::uint8_t modifiers);

// The modifier bits of the state word of an event, for keys (KeyModifier) and for the mouse (kMod...). The
// toolkit's command is this keyboard's Control key, which users of this system reach for where others press
// command; the toolkit's control is the key with a logo.
std::uint8_t keyModifiersOfState(std::uint16_t state);
long mouseModifiersOfState(std::uint16_t state);
// As mouseModifiersOfState, with the buttons that are held; the state has no bits for those above 5.
long mouseWordOfState(std::uint16_t state);

// The bit of a button by the server's number, which begins at 1; 0 for the wheel's and for unknown ones.
long mouseButtonOfServer(std::uint8_t button);
}
