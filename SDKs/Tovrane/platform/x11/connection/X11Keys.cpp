// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/connection/X11Keys.h"

#include "CORE/Utf8.h"
#include "Tovrane/platform/parts/WindowEvents.h"
#include "Tovrane/window/MouseEvents.h"

#include <xcb/xproto.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace Tovra
{
namespace
{
struct KeyRow
{
    std::uint32_t first; // a range of symbols
    std::uint32_t last;
    std::uint8_t number; // of the first
};

// The keypad has two symbols for most of its keys, with NumLock and without.
constexpr KeyRow keys[] = {
    {XKB_KEY_BackSpace, XKB_KEY_BackSpace, kVirtualBackspace},
    {XKB_KEY_Tab, XKB_KEY_Tab, kVirtualTab},
    {XKB_KEY_ISO_Left_Tab, XKB_KEY_ISO_Left_Tab, kVirtualTab},
    {XKB_KEY_KP_Tab, XKB_KEY_KP_Tab, kVirtualTab},
    {XKB_KEY_Clear, XKB_KEY_Clear, kVirtualClear},
    {XKB_KEY_KP_Begin, XKB_KEY_KP_Begin, kVirtualClear},
    {XKB_KEY_Return, XKB_KEY_Return, kVirtualReturn},
    {XKB_KEY_Pause, XKB_KEY_Pause, kVirtualPause},
    {XKB_KEY_Escape, XKB_KEY_Escape, kVirtualEscape},
    {XKB_KEY_space, XKB_KEY_space, kVirtualSpace},
    {XKB_KEY_KP_Space, XKB_KEY_KP_Space, kVirtualSpace},
    {XKB_KEY_End, XKB_KEY_End, kVirtualEnd},
    {XKB_KEY_KP_End, XKB_KEY_KP_End, kVirtualEnd},
    {XKB_KEY_Home, XKB_KEY_Home, kVirtualHome},
    {XKB_KEY_KP_Home, XKB_KEY_KP_Home, kVirtualHome},
    {XKB_KEY_Left, XKB_KEY_Down, kVirtualLeft}, // left, up, right, down
    {XKB_KEY_KP_Left, XKB_KEY_KP_Down, kVirtualLeft},
    {XKB_KEY_Page_Up, XKB_KEY_Page_Down, kVirtualPageUp},
    {XKB_KEY_KP_Page_Up, XKB_KEY_KP_Page_Down, kVirtualPageUp},
    {XKB_KEY_Select, XKB_KEY_Select, kVirtualSelect},
    {XKB_KEY_Print, XKB_KEY_Print, kVirtualPrint},
    {XKB_KEY_KP_Enter, XKB_KEY_KP_Enter, kVirtualKeypadEnter},
    {XKB_KEY_Insert, XKB_KEY_Insert, kVirtualInsert},
    {XKB_KEY_KP_Insert, XKB_KEY_KP_Insert, kVirtualInsert},
    {XKB_KEY_Delete, XKB_KEY_Delete, kVirtualDelete},
    {XKB_KEY_KP_Delete, XKB_KEY_KP_Delete, kVirtualDelete},
    {XKB_KEY_Help, XKB_KEY_Help, kVirtualHelp},
    {XKB_KEY_KP_0, XKB_KEY_KP_9, kVirtualKeypad0},
    {XKB_KEY_KP_Multiply, XKB_KEY_KP_Add, kVirtualKeypadMultiply},
    {XKB_KEY_KP_Subtract, XKB_KEY_KP_Divide, kVirtualKeypadSubtract}, // minus, point, slash
    {XKB_KEY_KP_Separator, XKB_KEY_KP_Separator, kVirtualKeypadDecimal},
    {XKB_KEY_F1, XKB_KEY_F12, kVirtualF1},
};

bool isPrintable(std::uint32_t character)
{
    return !Core::Utf8::isControl(character);
}
}

std::uint8_t virtualKeyOfKeysym(std::uint32_t keysym)
{
    for (const KeyRow& row : keys)
        if (keysym >= row.first && keysym <= row.last)
            return std::uint8_t(row.number + (keysym - row.first));
    return 0;
}

TovraKeyCode keyCodeOfKeysym(std::uint32_t keysym, std::uint32_t character, std::uint8_t modifiers)
{
    TovraKeyCode code;
    code.virtualKey = virtualKeyOfKeysym(keysym);
    if (code.virtualKey == 0 && isPrintable(character))
        code.character = character;
    code.modifiers = modifiers;
    return code;
}

std::uint8_t keyModifiersOfState(std::uint16_t state)
{
    unsigned bits = 0;
    bits |= state & XCB_MOD_MASK_SHIFT ? kKeyShift : 0;
    bits |= state & XCB_MOD_MASK_1 ? kKeyAlt : 0;
    bits |= state & XCB_MOD_MASK_CONTROL ? kKeyCommand : 0;
    bits |= state & XCB_MOD_MASK_4 ? kKeyControl : 0;
    return std::uint8_t(bits);
}

long mouseModifiersOfState(std::uint16_t state)
{
    long bits = 0;
    bits |= state & XCB_MOD_MASK_SHIFT ? kModShift : 0;
    bits |= state & XCB_MOD_MASK_1 ? kModAlt : 0;
    bits |= state & XCB_MOD_MASK_CONTROL ? kModCommand : 0;
    bits |= state & XCB_MOD_MASK_4 ? kModControl : 0;
    return bits;
}

long mouseWordOfState(std::uint16_t state)
{
    long word = mouseModifiersOfState(state);
    word |= state & XCB_BUTTON_MASK_1 ? kButtonLeft : 0;
    word |= state & XCB_BUTTON_MASK_2 ? kButtonMiddle : 0;
    word |= state & XCB_BUTTON_MASK_3 ? kButtonRight : 0;
    return word;
}

long mouseButtonOfServer(std::uint8_t button)
{
    switch (button)
    {
    case 1:
        return mouseButtonBit(0);
    case 2:
        return mouseButtonBit(2);
    case 3:
        return mouseButtonBit(1);
    case 8: // 4 to 7 are the wheel
    case 9:
    case 10:
        return mouseButtonBit(button - 5);
    default:
        return 0;
    }
}
}
