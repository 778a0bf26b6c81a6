// SPDX-License-Identifier: GPL-3.0-or-later
#include "CORE/Utf8.h"

#include <gtest/gtest.h>
#include <vector>

namespace Utf8 = Core::Utf8;
using Utf8::Form;

TEST(Utf8, TellsValidSequencesFromIrregularAndBrokenOnes)
{
    const struct
    {
        std::string_view text;
        char32_t value;
        size_t length;
        Form form;
    } cases[] = {
        {{"\0x", 2}, 0, 1, Form::valid},
        {"\x7F", 0x7F, 1, Form::valid},
        {"\xC2\x80", 0x80, 2, Form::valid},
        {"\xDF\xBF", 0x7FF, 2, Form::valid},
        {"\xE0\xA0\x80", 0x800, 3, Form::valid},
        {"\xEF\xBF\xBFx", 0xFFFF, 3, Form::valid},
        {"\xF0\x90\x80\x80", 0x10000, 4, Form::valid},
        {"\xF4\x8F\xBF\xBF", 0x10FFFF, 4, Form::valid},
        {"\xC1\xBF", 0x7F, 2, Form::irregular},
        {"\xE0\x9F\xBF", 0x7FF, 3, Form::irregular},
        {"\xF0\x8F\xBF\xBF", 0xFFFF, 4, Form::irregular},
        {"\xED\xA0\x80", 0xD800, 3, Form::irregular},
        {"\xED\xBF\xBF", 0xDFFF, 3, Form::irregular},
        {"\xF4\x90\x80\x80", 0x110000, 4, Form::irregular},
        {"\xF9\x80\x80\x80", 0x40000, 4, Form::irregular},
        {"\x80", 0x80, 1, Form::broken},
        {"\xC3", 0xC3, 1, Form::broken},
        {"\xE2\x82g", 0xE2, 1, Form::broken},
        {"\xF0\x9F\x8E", 0xF0, 1, Form::broken},
        {"\xFF", 0xFF, 1, Form::broken},
    };
    for (const auto& c : cases)
    {
        const Utf8::CodePoint got = Utf8::decode(c.text);
        EXPECT_EQ(got.value, c.value) << c.text;
        EXPECT_EQ(got.length, c.length) << c.text;
        EXPECT_EQ(got.form, c.form) << c.text;
        const bool isItsEncoding = Utf8::encode(c.value) == c.text.substr(0, c.length);
        EXPECT_EQ(isItsEncoding, c.form == Form::valid) << c.text;
    }
    for (const char32_t none : {0xD800, 0xDFFF, 0x110000})
        EXPECT_EQ(Utf8::encode(none), "");
}

TEST(Utf8, StepsAndCutsBetweenCharacters)
{
    const std::string text = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xB5"; // starts at 0, 1, 3, 6, ends at 10
    std::vector<size_t> forwards, backwards;
    for (size_t at = 0; at < text.size(); at = Utf8::advance(text, at))
        forwards.push_back(at);
    for (size_t at = text.size(); at > 0;)
        backwards.insert(backwards.begin(), at = Utf8::stepBack(text, at));
    const std::vector<size_t> starts = {0, 1, 3, 6};
    EXPECT_EQ(forwards, starts);
    EXPECT_EQ(backwards, starts);
    EXPECT_EQ(Utf8::advance(text, 10), 10u);
    EXPECT_EQ(Utf8::stepBack(text, 0), 0u);

    for (const auto& [position, start] :
         {std::pair(0u, 0u), {2u, 1u}, {5u, 3u}, {9u, 6u}, {10u, 10u}, {99u, 10u}})
    {
        EXPECT_EQ(Utf8::align(text, position), start) << position;
        EXPECT_EQ(Utf8::cut(text, position), text.substr(0, start)) << position;
    }
    EXPECT_EQ(Utf8::cut(std::string(20, '\x80'), 10).size(), 7u) << "three bytes at most";
}

TEST(Utf8, LeavesInvalidBytesOutOrReplacesThem)
{
    const std::string valid = "a\n\xC3\xA4\xF0\x9F\x8E\xB5", mark = "\xEF\xBF\xBD";
    EXPECT_EQ(Utf8::removeInvalid(valid), valid);
    EXPECT_EQ(Utf8::replaceInvalid(valid), valid);
    const struct
    {
        std::string text, removed, replaced;
    } cases[] = {
        {"\xE2\x82g", "g", mark + "g"}, // one mark for each beginning
        {"\xF0\x9F\x8E\xC3\xA4", "\xC3\xA4", mark + "\xC3\xA4"},
        {"x\xF0\x9F", "x", "x" + mark},
        {"\xE0\x80\x80", "", mark + mark + mark}, // no sequence begins like this
        {"\xED\xA0\x80", "", mark + mark + mark},
        {"\xF4\x90\xFF", "", mark + mark + mark},
        {"\xC0\xAFz", "z", mark + mark + "z"},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(Utf8::removeInvalid(c.text), c.removed) << c.text;
        EXPECT_EQ(Utf8::replaceInvalid(c.text), c.replaced) << c.text;
    }
}

TEST(Utf8, AHalfCharacterAtTheEndIsDropped)
{
    const std::string_view text = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xB5";
    constexpr size_t starts[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 10};
    for (size_t most = 0; most < std::size(starts); ++most)
        EXPECT_EQ(Core::Utf8::withoutHalfCharacter(text.substr(0, most)), text.substr(0, starts[most]))
            << most;
    for (const std::string_view other : {"x\xC4r\xC3", "\x80\xC3", "\xFF", "\xC1", "\xF5\x80\x80", ""})
        EXPECT_EQ(Core::Utf8::withoutHalfCharacter(other), other) << "it is no UTF-8";
}
