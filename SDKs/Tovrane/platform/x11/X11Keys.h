// From the key symbols of X to the keys that views know. No server is asked: these are tables.
#pragma once

#include "Tovrane/window/TovraKeyCode.h"

#include <cstdint>

namespace Tovra
{
// The number of a key that isn't a plain character (VirtualKey), 0 for all others.
std::uint8_t virtualKeyOfKeysym(std::uint32_t keysym);

// character is what the key types, 0 for nothing. A key with a number of its own bears no character, and
// characters that control something are none.
TovraKeyCode keyCodeOfKeysym(std::uint32_t keysym, std::uint32_t character, std::uint8_t modifiers);

// The modifier bits of the state word of an event, for keys (KeyModifier) and for the mouse (kMod...).
// The key with a logo is command.
std::uint8_t keyModifiersOfState(std::uint16_t state);
long mouseModifiersOfState(std::uint16_t state);
// With the buttons that are held, as far as the state has bits for them.
long mouseWordOfState(std::uint16_t state);

// The bit of a button that the server counts from 1; 0 for the wheel's and unknown ones.
long mouseButtonOfServer(std::uint8_t button);
}
