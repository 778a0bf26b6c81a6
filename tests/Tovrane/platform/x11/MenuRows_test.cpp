#include "Tovrane/CMenuItem.h"
#include "Tovrane/TovraKeyCode.h"
#include "Tovrane/platform/x11/MenuRows.h"
#include "windows/PlainMenu.h"

#include <gtest/gtest.h>

using namespace Tovra;

static double sixPixels(const std::string& text)
{
    return 6.0 * double(text.size());
}

TEST(MenuRows, StandBelowEachOtherAndLeadKeysRound)
{
    PlainMenu menu;
    menu.add("Heading", CMenuItem::kTitle);
    menu.add("Load", 0);
    menu.add("", CMenuItem::kSeparator);
    menu.add("Gone", CMenuItem::kDisabled);
    menu.add("lower", CMenuItem::kChecked);
    const MenuRows rows(menu, 1.0, sixPixels);
    EXPECT_EQ(rows.height(), 5 + 4 * 22 + 9 + 5);
    const struct
    {
        int y, row;
    } points[] = {{4, -1}, {5, 0},  {26, 0},  {27, 1},   {49, 2},
                  {57, 2}, {58, 3}, {101, 4}, {102, -1}, {-1, -1}};
    for (const auto& point : points)
        EXPECT_EQ(rows.rowAt(point.y), point.row) << point.y;
    EXPECT_EQ(rows.step(-1, true), 1);
    EXPECT_EQ(rows.step(-1, false), 4);
    EXPECT_EQ(rows.step(1, true), 4);
    EXPECT_EQ(rows.step(4, true), 1);
    EXPECT_EQ(rows.step(1, false), 4);
    EXPECT_EQ(rows.beginningWith('l', 1), 4);
    EXPECT_EQ(rows.beginningWith('L', 4), 1);
    EXPECT_EQ(rows.beginningWith('g', -1), -1) << "disabled";
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
        menu.add(std::string(one.length, 'x').c_str(), 0)->setKey(one.key, kKeyControl);
        const MenuRows rows(menu, one.scale, sixPixels);
        EXPECT_EQ(rows.width(), one.width) << one.length;
        EXPECT_EQ(rows[0].key, one.key != nullptr ? "Ctrl+S" : "");
    }
    PlainMenu empty;
    const MenuRows none(empty, 1.0, sixPixels);
    EXPECT_EQ(none.step(-1, true), -1);
    EXPECT_EQ(none.rowAt(6), -1);
}
