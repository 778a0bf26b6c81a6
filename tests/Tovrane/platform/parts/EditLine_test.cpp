// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/parts/EditLine.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

using namespace Tovra;

// The text with its selection in brackets, or a bar for the caret.
static std::string shown(const EditLine& line)
{
    std::string result = line.text();
    if (!line.hasSelection())
        return result.insert(line.caret(), "|");
    return result.insert(line.selectionEnd(), "]").insert(line.selectionStart(), "[");
}

// One letter a key: l r left and right, w W a word left and right, h e home and end, capital LRHE with shift,
// < > backspace and delete, - a word backwards; others are typed.
static void keys(EditLine& line, const std::string& pressed)
{
    struct Motion
    {
        EditLine::Step step;
        bool forwards, selects;
    };
    const std::map<char, Motion> moves = {
        {'l', {EditLine::character, false, false}}, {'L', {EditLine::character, false, true}},
        {'r', {EditLine::character, true, false}},  {'R', {EditLine::character, true, true}},
        {'w', {EditLine::word, false, false}},      {'W', {EditLine::word, true, false}},
        {'h', {EditLine::wholeLine, false, false}}, {'H', {EditLine::wholeLine, false, true}},
        {'e', {EditLine::wholeLine, true, false}},  {'E', {EditLine::wholeLine, true, true}},
    };
    for (const char key : pressed)
        if (const auto move = moves.find(key); move != moves.end())
            line.move(move->second.step, move->second.forwards, move->second.selects);
        else if (key == '<' || key == '>')
            line.erase(EditLine::character, key == '>');
        else if (key == '-')
            line.erase(EditLine::word, false);
        else
            line.insert(std::string(1, key));
}

TEST(EditLine, DoesWhatKeysMean)
{
    const struct
    {
        const char* text;
        const char* keys;
        const char* expected;
    } cases[] = {
        {"gain", "", "[gain]"},
        {"gain", "l", "|gain"},
        {"gain", "x", "x|"},
        {"gain", "<", "|"},
        {"gain", "ell<", "g|in"},
        {"gain", "ell>", "ga|n"},
        {"gain", "hl<", "|gain"},
        {"gain", "er>", "gain|"},
        {"gain", "eLL", "ga[in]"},
        {"gain", "eLLLR", "ga[in]"},
        {"gain", "eLLx", "gax|"},
        {"gain", "hRHE", "[gain]"},
        {"a\xc3\xa4z", "hrr<", "a|z"},
        {"\xe2\x82\xac", "hr", "\xe2\x82\xac|"},
        {"one two", "ew", "one |two"},
        {"one two", "hW", "one| two"},
        {"one, two", "eww", "|one, two"},
        {"one two", "e-", "one |"},
        {"one  two ", "e--", "|"},
        {"", "<>-lr", "|"},
    };
    for (const auto& one : cases)
    {
        EditLine line(20);
        line.setText(one.text);
        keys(line, one.keys);
        EXPECT_EQ(shown(line), one.expected) << one.text << " after " << one.keys;
    }
}

TEST(EditLine, SelectsWordsAndPlacesBetweenCharacters)
{
    EditLine line(40);
    line.setText("ab, \xc3\xa4\xc3\xb6 c");
    const struct
    {
        std::size_t at;
        const char* selected;
    } clicks[] = {{0, "ab"}, {1, "ab"}, {2, ", "}, {5, "\xc3\xa4\xc3\xb6"}, {9, "c"}, {99, "c"}};
    for (const auto& click : clicks)
    {
        line.selectWord(click.at);
        EXPECT_EQ(line.selected(), click.selected) << click.at;
    }
    line.moveTo(5, false);
    EXPECT_EQ(line.caret(), 4u) << "inside of a character";
    EditLine empty(4);
    empty.selectWord(3);
    EXPECT_FALSE(empty.hasSelection());
}

TEST(EditLine, TakesNoMoreThanItHasRoomFor)
{
    EditLine line(5);
    line.setText("1234567");
    EXPECT_EQ(line.text(), "12345");
    line.insert("ab\xc3\xa4\xc3\xa4"); // in place of all of it
    EXPECT_EQ(line.text(), "ab\xc3\xa4") << "no half of a character";
    line.insert("xyz");
    EXPECT_EQ(shown(line), "ab\xc3\xa4x|");
    line.insert("y");
    EXPECT_EQ(shown(line), "ab\xc3\xa4x|");
}

TEST(OnOneLine, MakesALineOfAnything)
{
    const struct
    {
        std::string text;
        const char* expected;
    } cases[] = {
        {"a\nb\r\nc\td\r\n", "a b c d"},
        {std::string("a\0b", 3), "ab"},
        {"%s%n", "%s%n"},
        {"\x1b[0m", "[0m"},
        {"a\xff\xc3", "a"},
        {"\xc0\xaf\xed\xa0\x80\xf5z", "z"},
        {"\xc2\x85x\x7f", "x"},
        {"\xf0\x9f\x8e\xb5", "\xf0\x9f\x8e\xb5"},
        {"\n\n", ""},
    };
    for (const auto& one : cases)
        EXPECT_EQ(onOneLine(one.text), one.expected);
}
