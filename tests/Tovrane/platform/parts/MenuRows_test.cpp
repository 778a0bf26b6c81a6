// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/MenuRows.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/window/TovraKeyCode.h"
#include "windows/PlainMenu.h"

#include <gtest/gtest.h>

using namespace Tovra;

static double sixPixels(const std::string& text)
{
    return 6.0 * double(text.size());
}

TEST(MenuRows, StandBelowEachOther)
{
    PlainMenu menu;
    menu.add("First", 0);
    menu.add("", CMenuItem::kSeparator);
    menu.add("Last", 0);
    const MenuRows rows(menu, 1.0, sixPixels);
    EXPECT_EQ(rows.height(), 5 + 22 + 9 + 22 + 5);
    for (const auto& [y, row] :
         {std::pair(4, -1), {5, 0}, {26, 0}, {27, 1}, {35, 1}, {36, 2}, {57, 2}, {58, -1}})
        EXPECT_EQ(rows.rowAt(y), row) << y;
}

TEST(MenuRows, AreReachedByKeysUnlessNothingCanBeChosen)
{
    PlainMenu menu;
    menu.add("Title", CMenuItem::kTitle);
    menu.add("one", 0);
    menu.add("", CMenuItem::kSeparator);
    menu.add("Off", CMenuItem::kDisabled);
    menu.addSubmenu("Other").add("Inner", 0);
    const MenuRows rows(menu, 1.0, sixPixels);
    const struct
    {
        int from, next, previous, beginningWithO;
    } cases[] = {{-1, 1, 4, 1}, {0, 1, 4, 1}, {1, 4, 4, 4}, {3, 4, 1, 4}, {4, 1, 1, 1}};
    for (const auto& one : cases)
    {
        EXPECT_EQ(rows.step(one.from, true), one.next) << one.from;
        EXPECT_EQ(rows.step(one.from, false), one.previous) << one.from;
        EXPECT_EQ(rows.beginningWith('O', one.from), one.beginningWithO) << one.from;
    }
    EXPECT_EQ(rows.beginningWith('x', 1), -1);
}

TEST(MenuRows, NameTheKeyboardsModifiers)
{
    PlainMenu menu;
    menu.add("a", 0)->setKey("s", kKeyCommand | kKeyShift);
    menu.add("b", 0)->setKey("F5", kKeyControl | kKeyAlt);
    const MenuRows rows(menu, 1.0, sixPixels);
    EXPECT_EQ(rows[0].key, "Ctrl+Shift+S");
    EXPECT_EQ(rows[1].key, "Super+Alt+F5");
}

TEST(MenuRows, AreAsWideAsTheirTextsWithinBounds)
{
    const struct
    {
        std::size_t length;
        const char* key;
        double scale;
        int width;
    } cases[] = {
        {20, nullptr, 1.0, 26 + 120 + 26}, {20, "s", 1.0, 26 + 120 + 24 + 36 + 26}, {1, nullptr, 1.0, 96},
        {500, nullptr, 1.0, 560},          {20, nullptr, 2.0, 52 + 120 + 52},       {1, nullptr, 2.0, 192}};
    for (const auto& one : cases)
    {
        PlainMenu menu;
        menu.add(std::string(one.length, 'x').c_str(), 0)->setKey(one.key, kKeyCommand);
        const MenuRows rows(menu, one.scale, sixPixels);
        EXPECT_EQ(rows.width(), one.width) << one.length;
        EXPECT_EQ(rows[0].key, one.key != nullptr ? "Ctrl+S" : "");
    }
    PlainMenu empty;
    const MenuRows none(empty, 1.0, sixPixels);
    EXPECT_EQ(none.step(-1, true), -1);
    EXPECT_EQ(none.rowAt(6), -1);
}
