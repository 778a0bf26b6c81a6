#include "Tovrane/MouseEvents.h"
#include "Tovrane/platform/x11/ClickCounter.h"
#include "Tovrane/platform/x11/X11Keys.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

using namespace Tovra;

TEST(X11Keys, HaveTheNumbersThatViewsKnow)
{
    const struct
    {
        std::uint32_t symbol;
        int number;
    } keys[] = {
        {XKB_KEY_BackSpace, 1},
        {XKB_KEY_Tab, 2},
        {XKB_KEY_ISO_Left_Tab, 2},
        {XKB_KEY_Clear, 3},
        {XKB_KEY_Return, 4},
        {XKB_KEY_Pause, 5},
        {XKB_KEY_Escape, 6},
        {XKB_KEY_space, 7},
        {XKB_KEY_End, 9},
        {XKB_KEY_Home, 10},
        {XKB_KEY_Left, 11},
        {XKB_KEY_Up, 12},
        {XKB_KEY_Right, 13},
        {XKB_KEY_Down, 14},
        {XKB_KEY_Page_Up, 15},
        {XKB_KEY_Page_Down, 16},
        {XKB_KEY_Select, 17},
        {XKB_KEY_Print, 18},
        {XKB_KEY_KP_Enter, 19},
        {XKB_KEY_Insert, 21},
        {XKB_KEY_Delete, 22},
        {XKB_KEY_Help, 23},
        {XKB_KEY_KP_0, 24},
        {XKB_KEY_KP_9, 33},
        {XKB_KEY_KP_Add, 35},
        {XKB_KEY_KP_Multiply, 34},
        {XKB_KEY_KP_Subtract, 37},
        {XKB_KEY_KP_Decimal, 38},
        {XKB_KEY_KP_Divide, 39},
        {XKB_KEY_F1, 40},
        {XKB_KEY_F12, 51},
        {XKB_KEY_F13, 0},
        {XKB_KEY_KP_Home, 10},
        {XKB_KEY_KP_Down, 14},
        {XKB_KEY_KP_Page_Down, 16},
        {XKB_KEY_KP_Delete, 22},
        {XKB_KEY_Shift_L, 0},
        {XKB_KEY_a, 0},
        {0, 0},
    };
    for (const auto& key : keys)
        EXPECT_EQ(virtualKeyOfKeysym(key.symbol), key.number) << std::hex << key.symbol;
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
    } states[] = {{1, 1, 16},         {4, 8, 128}, {8, 2, 64}, {64, 4, 32}, {1 | 4 | 8 | 64, 15, 240},
                  {2 | 16 | 32, 0, 0}};
    for (const auto& state : states)
    {
        EXPECT_EQ(keyModifiersOfState(state.state), state.key);
        EXPECT_EQ(mouseModifiersOfState(state.state), state.mouse);
    }
    EXPECT_EQ(mouseWordOfState(0x100 | 0x200 | 0x400 | 1),
              kButtonLeft | kButtonMiddle | kButtonRight | kModShift);
    EXPECT_EQ(mouseButtonOfServer(3), kButtonRight);
    EXPECT_EQ(mouseButtonOfServer(4), 0);
    EXPECT_EQ(mouseButtonOfServer(9), kButton4);
    EXPECT_EQ(mouseButtonOfServer(10), kButton5);
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
