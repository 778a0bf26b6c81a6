// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetNames.h"

#include <gtest/gtest.h>

using Tovra::compareUpperCase;
using Tovra::fileNameFor;

TEST(PresetNames, MakesNamesThatStayInTheirFolder)
{
    const std::string umlauts = "\xC3\xA4\xC3\xB6\xC3\xBC", tails(300, '\x80');
    const struct
    {
        std::string name, file;
    } table[] = {
        {"Kick 100%n", "Kick 100%n.dks"},
        {"../../etc/x", "_._.._etc_x.dks"},
        {"a/b\\c:d", "a_b\\c:d.dks"},
        {"tab\tnew\nline\x7f", "tab_new_line_.dks"},
        {"..", "_.dks"},
        {".hidden", "_hidden.dks"},
        {std::string(252, 'x'), std::string(251, 'x') + ".dks"},
        {std::string(250, 'x') + umlauts, std::string(250, 'x') + ".dks"}, // not half of a character
        {tails, tails.substr(0, 248) + ".dks"},
    };
    for (const auto& each : table)
        EXPECT_EQ(fileNameFor(each.name, ".dks"), each.file) << each.name;
    EXPECT_EQ(Tovra::baseNameOf("/a.b/c:d\\e.f.dks"), "c:d\\e.f");
}

TEST(PresetNames, SortsByTheUpperCaseOfEachCharacter)
{
    // Each stands before the next.
    const char* sorted[] = {"",
                            "%",
                            "A",
                            "a b",
                            "AB",
                            "b",
                            "_",
                            "\xC3\xA4",
                            "\xC3\x84x",
                            "\xE2\x82\xAC",
                            "\xF0\x9F\x8E\xB5",
                            "\x80\x80",
                            "\xF0\x9F"};
    for (size_t i = 0; i < std::size(sorted); ++i)
        for (size_t j = 0; j < std::size(sorted); ++j)
            EXPECT_EQ(compareUpperCase(sorted[i], sorted[j]), int(i > j) - int(i < j))
                << sorted[i] << ", " << sorted[j];
    EXPECT_EQ(compareUpperCase("b\xC3\xA4SS", "B\xC3\x84ss"), 0);
}
