// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/ClickCounter.h"
#include "Tovrane/platform/parts/HeldKeys.h"
#include "Tovrane/platform/x11/connection/X11Keys.h"
#include "Tovrane/platform/x11/connection/X11Window.h"
#include "Tovrane/window/MouseEvents.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <xkbcommon/xkbcommon.h>

using namespace Tovra;

TEST(X11Keys, HaveTheNumbersThatViewsKnow)
{
    const auto numberOf = [](const std::string& name)
    { return virtualKeyOfKeysym(xkb_keysym_from_name(name.c_str(), XKB_KEYSYM_NO_FLAGS)); };
    // From 1 on, with a dash for a number without a key.
    std::istringstream numbered("BackSpace Tab Clear Return Pause Escape space - End Home Left Up Right Down "
                                "Page_Up Page_Down Select Print KP_Enter - Insert Delete Help "
                                "KP_0 KP_1 KP_2 KP_3 KP_4 KP_5 KP_6 KP_7 KP_8 KP_9 KP_Multiply KP_Add - "
                                "KP_Subtract KP_Decimal KP_Divide F1 F2 F3 F4 F5 F6 F7 F8 F9 F10 F11 F12");
    int number = 1;
    for (std::string name; numbered >> name; ++number)
        EXPECT_TRUE(name == "-" || numberOf(name) == number) << name;
    EXPECT_EQ(number, 52);
    const std::map<std::string, int> others = {{"ISO_Left_Tab", 2},  {"KP_Home", 10},   {"KP_Down", 14},
                                               {"KP_Page_Down", 16}, {"KP_Delete", 22}, {"F13", 0},
                                               {"Shift_L", 0},       {"a", 0},          {"no such key", 0}};
    for (const auto& [name, expected] : others)
        EXPECT_EQ(numberOf(name), expected) << name;
}

TEST(X11Keys, BearEitherACharacterOrANumber)
{
    const struct
    {
        std::uint32_t symbol;
        std::uint32_t character;
        std::int64_t expected;
    } keys[] = {
        {XKB_KEY_a, 'a', 'a'},   {XKB_KEY_adiaeresis, 0xe4, 0xe4}, {XKB_KEY_KP_5, '5', 0},
        {XKB_KEY_space, ' ', 0}, {XKB_KEY_Delete, 0x7f, 0},        {0x100001f, 0x1f, 0},
        {0x1000090, 0x90, 0},    {0x101f3b5, 0x1f3b5, 0x1f3b5},    {XKB_KEY_Shift_L, 0, 0},
    };
    for (const auto& key : keys)
    {
        const TovraKeyCode code = keyCodeOfKeysym(key.symbol, key.character, kKeyShift);
        EXPECT_EQ(code.character, key.expected) << std::hex << key.symbol;
        EXPECT_EQ(code.modifiers, kKeyShift);
    }
}

TEST(X11Keys, KeepModifiersApart)
{
    const struct
    {
        std::uint16_t state;
        int key;
        long mouse;
    } states[] = {{1, 1, 16},         {4, 4, 32}, {8, 2, 64}, {64, 8, 128}, {1 | 4 | 8 | 64, 15, 240},
                  {2 | 16 | 32, 0, 0}};
    for (const auto& state : states)
    {
        EXPECT_EQ(keyModifiersOfState(state.state), state.key);
        EXPECT_EQ(mouseModifiersOfState(state.state), state.mouse);
    }
    EXPECT_EQ(mouseWordOfState(0x100 | 0x200 | 0x400 | 1),
              kButtonLeft | kButtonMiddle | kButtonRight | kModShift);
    const long buttons[] = {0, kButtonLeft, kButtonMiddle, kButtonRight, 0,        0,
                            0, 0,           kButtonMiddle, kButton4,     kButton5, 0};
    for (std::uint8_t button = 0; button < std::size(buttons); ++button)
        EXPECT_EQ(mouseButtonOfServer(button), buttons[button]) << int(button);
}

TEST(X11Window, IsOfASizeThatTheServerCanBear)
{
    EXPECT_EQ(X11Window::bounded(0.4, -0.6, 99.5, 60.0), (X11Place{0, -1, 100, 60}));
    EXPECT_EQ(X11Window::bounded(-1.0e9, 1.0e9, -5.0, 0.0), (X11Place{-32768, 32767, 1, 1}));
    EXPECT_EQ(X11Window::bounded(std::nan(""), 0.0, 1.0e9, std::nan("")), (X11Place{-32768, 0, 32767, 1}));
}

TEST(ClickCounter, CountsClicksThatBelongTogether)
{
    const struct
    {
        int button, x, y;
        std::uint32_t time;
        int expected;
    } presses[] = {
        {1, 10, 10, 0xffffff00u, 1}, {1, 12, 8, 0xffffffffu, 2}, {1, 12, 8, 100, 3},  {1, 17, 8, 200, 1},
        {1, 17, 8, 601, 1},          {3, 17, 8, 700, 1},         {3, 17, 8, 1100, 2}, {3, 17, 13, 1200, 1},
    };
    ClickCounter clicks;
    for (const auto& press : presses)
        EXPECT_EQ(clicks.press(press.button, press.x, press.y, press.time), press.expected) << press.time;
}

TEST(HeldKeys, AReleaseGoesWhereItsPressWent)
{
    using enum KeyTaker;
    const struct
    {
        std::vector<KeyTaker> presses; // of one key, which repeats
        KeyTaker released;
    } cases[] = {{{}, unknown},
                 {{views}, views},
                 {{host, views}, host},
                 {{views, host}, host},
                 {{views, swallowed}, swallowed}};
    HeldKeys keys;
    for (const auto& one : cases)
    {
        for (const KeyTaker taker : one.presses)
            keys.press(200, taker);
        EXPECT_EQ(keys.release(100), unknown);
        EXPECT_EQ(keys.release(200), one.released);
        EXPECT_EQ(keys.release(200), unknown);
    }
    keys.press(7, host);
    keys.clear();
    EXPECT_EQ(keys.release(7), unknown);
}
