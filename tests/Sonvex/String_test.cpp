#include "Sonvex/String.h"

#include <gtest/gtest.h>

using Sonvex::String;

TEST(String, TakesALoneTextAsItStandsAndAFormatWithArguments)
{
    EXPECT_EQ(String("100% %s %n"), "100% %s %n");
    EXPECT_EQ(String(std::string("5% %s")), "5% %s");
    EXPECT_EQ(String(static_cast<const char*>(nullptr)), "");
    EXPECT_EQ(String("%s is %i%%", "100% %s", 5), "100% %s is 5%");
    String text("a%");
    text.append_formated("b%s");
    text.append_formated("-%02i-%s", 7, "%d");
    text = text + String("!");
    EXPECT_EQ(text, "a%b%s-07-%d!");
    EXPECT_FALSE(text == "a%b%s-07-%d");
    EXPECT_FALSE(text == nullptr);
}

TEST(String, CutsWhatAFormatPrintsAndNothingElse)
{
    const std::string huge(40000, 'x');
    EXPECT_EQ(String("%s", huge.c_str()).size(), 32223u);
    EXPECT_EQ(String(huge.c_str()).size(), 40000u);
    String text(huge);
    text.append_formated("%s", huge.c_str());
    EXPECT_EQ(text.size(), 40000u + 32223u);
}

TEST(String, ChangesCaseOfPlainLettersOnly)
{
    String text("aZ@[`{ \xC3\xA4\xC3\x84 9");
    text.toUpper();
    EXPECT_EQ(text, "AZ@[`{ \xC3\xA4\xC3\x84 9");
    text.toLower();
    EXPECT_EQ(text, "az@[`{ \xC3\xA4\xC3\x84 9");
}

TEST(String, LooksAtItsEndAndDropsCharacters)
{
    EXPECT_FALSE(String().endsWidth('/'));
    EXPECT_FALSE(String().endsWidth('\0'));
    EXPECT_TRUE(String("a/").endsWidth('/'));
    EXPECT_FALSE(String("a/b").endsWidth('/'));
    String text("--a-b--");
    text.removeChars('-');
    EXPECT_EQ(text, "ab");
    text.removeChars('b');
    text.removeChars('a');
    EXPECT_EQ(text, "");
}

TEST(String, ShortensFromTheStart)
{
    struct
    {
        const char* text;
        int length;
        const char* result;
    } const cases[] = {
        {"Sidechain", 9, "Sidechain"},     {"Sidechain", 8, "Sdechain"}, // no more than needed
        {"Sidechain", 4, "Sdchn"},                                       // no more to be had
        {"AEIOU a", 2, "AEIOU"},           {"x y z", -5, "xyz"},
        {"\xE4\xFC\xF6\xC4!", 0, "\xC4!"}, {"", 0, ""},
    };
    for (const auto& c : cases)
    {
        String text(c.text);
        Sonvex::shortenString(text, c.length);
        EXPECT_EQ(text, c.result) << c.text << " to " << c.length;
    }
}

TEST(String, ReplacesEveryOccurrenceOnce)
{
    struct
    {
        const char* text;
        const char* from;
        const char* to;
        const char* result;
    } const cases[] = {
        {"a-b-c", "-", "+", "a+b+c"}, {"aaa", "a", "aa", "aaaaaa"}, {"aaaa", "aa", "a", "aa"},
        {"a%b", "%", "%%", "a%%b"},   {"abc", "b", "", "ac"},       {"abc", "", "x", "abc"},
        {"abc", "b", "b", "abc"},     {"abc", "d", "x", "abc"},     {"", "a", "b", ""},
        {"abc", nullptr, "x", "abc"}, {"abc", "b", nullptr, "abc"},
    };
    for (const auto& c : cases)
    {
        String text(c.text);
        Sonvex::replaceString(text, c.from, c.to);
        EXPECT_EQ(text, c.result) << c.text << ": " << (c.from ? c.from : "null") << " to "
                                  << (c.to ? c.to : "null");
    }
}
