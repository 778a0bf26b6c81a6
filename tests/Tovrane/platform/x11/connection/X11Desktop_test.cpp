// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/connection/X11Desktop.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using namespace Tovra;

TEST(ScreenSettings, AreReadFromWhateverTheResourcesHold)
{
    const struct
    {
        std::string resources;
        ScreenSettings expected;
    } cases[] = {
        {"", {1.0, kSubpixelRGB}},
        {"Xft.dpi:\t144\nXft.rgba:\tbgr\n", {1.5, kSubpixelBGR}},
        {"*dpi: 120\nXft*rgba: none", {1.25, kSubpixelNone}},
        {"Xft.dpi: 96.5\nXft.rgba: unknown", {96.5 / 96.0, kSubpixelRGB}},
        {"Xft.dpi: 1\n", {0.75, kSubpixelRGB}},
        {"Xft.dpi: 1e9\n", {4.0, kSubpixelRGB}},
        {"Xft.dpi: -192\n", {1.0, kSubpixelRGB}},
        {"Xft.dpi: nan\n", {1.0, kSubpixelRGB}},
        {"Xft.dpi: inf\n", {1.0, kSubpixelRGB}},
        {"Xft.dpi: %s%n\n:::\n\\", {1.0, kSubpixelRGB}},
        {std::string("Xft.dpi: 192\n\0Xft.dpi: 288\n", 28), {2.0, kSubpixelRGB}},
        {"Xft.dpi: 192\n" + std::string(std::size_t(2) << 20, 'x'), {1.0, kSubpixelRGB}},
    };
    for (const auto& one : cases)
    {
        EXPECT_EQ(screenSettingsOf(one.resources).scale, one.expected.scale) << one.resources.substr(0, 80);
        EXPECT_EQ(screenSettingsOf(one.resources).order, one.expected.order) << one.resources.substr(0, 80);
    }
}

TEST(ScreenSettings, ReadNoOtherFile)
{
    const auto file = std::filesystem::temp_directory_path() / "lodex_resources";
    std::ofstream(file) << "Xft.dpi: 192\n";
    for (const char* before : {"", "  ", "Xft.rgba: bgr\n", "! a\n\t"})
        EXPECT_EQ(screenSettingsOf(before + ("#include \"" + file.string() + "\"\n")).scale, 1.0) << before;
    std::filesystem::remove(file);
}
