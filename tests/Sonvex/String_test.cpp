// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/String.h"

#include <gtest/gtest.h>

using Sonvex::String;

TEST(String, TakesALoneTextAsItStandsAndAFormatWithArguments)
{
    EXPECT_EQ(String("100% %s %n"), "100% %s %n");
    EXPECT_EQ(String("%s is %i%%", "100% %s", 5), "100% %s is 5%");
    EXPECT_EQ(String("%40000i", 1).size(), 32223u);
    String text("a%");
    text.append_formated("b%s");
    text.append_formated("-%02i-%s", 7, "%d");
    text = text + String("!");
    EXPECT_EQ(text, "a%b%s-07-%d!");
}

TEST(String, ChangesCaseOfPlainLettersOnly)
{
    String text("aZ@[`{ \xC3\xA4\xC3\x84 9");
    text.toUpper();
    EXPECT_EQ(text, "AZ@[`{ \xC3\xA4\xC3\x84 9");
    text.toLower();
    EXPECT_EQ(text, "az@[`{ \xC3\xA4\xC3\x84 9");
}

TEST(String, ReplacesEveryOccurrenceOnce)
{
    struct
    {
        const char *text, *from, *to, *result;
    } const cases[] = {
        {"a-b-c", "-", "+", "a+b+c"}, {"aaa", "a", "aa", "aaaaaa"}, {"aaaa", "aa", "a", "aa"},
        {"abc", "b", "", "ac"},       {"abc", "", "x", "abc"},      {"abc", nullptr, "x", "abc"},
    };
    for (const auto& c : cases)
    {
        String text(c.text);
        Sonvex::replaceString(text, c.from, c.to);
        EXPECT_EQ(text, c.result) << c.text << " with " << c.to;
    }
}
