// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/Utf8.h"
#include "Tovrane/views/controls/WrappedText.h"

#include <gtest/gtest.h>

using namespace Tovra;

// Every character is one wide.
static double characters(const std::string& text)
{
    double count = 0.0;
    for (std::size_t at = 0; at < text.size(); at = Core::Utf8::advance(text, at))
        ++count;
    return count;
}

TEST(WrappedText, BreaksAtLineBreaksThenAtSpacesThenInsideWords)
{
    const struct
    {
        std::string text;
        std::vector<std::string> lines;
    } cases[] = {
        {"", {}},
        {"\n\n", {}},
        {"one line.", {"one line."}},
        {"a word or two more", {"a word or", "two more"}},
        {"two  gaps  stay   but  not at an end", {"two  gaps", "stay   but", "not at an", "end"}},
        {"abcdefghijklm nop", {"abcdefghij", "klm nop"}},
        {"so abcdefghijklm", {"so", "abcdefghij", "klm"}},
        {"\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6",
         {"\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4", "\xC3\xB6"}},
        {"a\r\n\nb\tc", {"a", "", "b c"}},
        {"100%s %n", {"100%s %n"}},
        {"a\xC3z", {"a\xEF\xBF\xBDz"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(wrapText(c.text, 10.0, characters), c.lines) << c.text;
    EXPECT_EQ(wrapText("abc", 0.0, characters), (std::vector<std::string>{"a", "b", "c"}));
}

TEST(WrappedText, ShortensToOneLine)
{
    EXPECT_EQ(shortenText("a\nb", 10.0, characters), "a b");
    EXPECT_EQ(shortenText("abcdefghij", 10.0, characters), "abcdefghij");
    EXPECT_EQ(shortenText("abcdefgh\xC3\xA4\xC3\xB6z", 10.0, characters), "abcdefgh\xC3\xA4\xE2\x80\xA6");
    EXPECT_EQ(shortenText("ab", 0.0, characters), "\xE2\x80\xA6");
}
