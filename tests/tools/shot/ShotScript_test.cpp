// SPDX-License-Identifier: GPL-3.0-or-later
// What a script may say, and what is said about one that is wrong.
#include "tools/common/ToolError.h"
#include "tools/shot/ShotScript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using namespace lodex;
using Kind = ShotStep::Kind;

// All that a step holds, apart from its kind: numbers, mouse word, key, id=text, titles.
static std::string shown(const ShotStep& step)
{
    std::ostringstream text;
    text << step.x << ',' << step.y << ',' << step.amount << ' ' << step.mouse << ' ' << step.key.character
         << '/' << int(step.key.virtualKey) << ' ' << step.id << '=' << step.text;
    for (const std::string& title : step.titles)
        text << '<' << title << '>';
    return text.str();
}

TEST(ShotScript, EveryStepIsRead)
{
    const struct
    {
        const char* line;
        Kind kind;
        const char* holds;
    } cases[] = {
        {"move 12.5 -3", Kind::move, "12.5,-3,0 0 0/0 ="},
        {"  leave\t# at once", Kind::leave, "0,0,0 0 0/0 ="},
        {"press middle", Kind::press, "0,0,0 4 0/0 ="},
        {"release right #2", Kind::release, "0,0,0 8 0/0 ="},
        {"double left", Kind::doubleClick, "0,0,0 2 0/0 ="},
        {"modifiers none", Kind::modifiers, "0,0,0 0 0/0 ="},
        {"modifiers shift,alt, control,command", Kind::modifiers, "0,0,0 240 0/0 ="},
        {"wheel 1 2 -0.5", Kind::wheel, "1,2,-0.5 0 0/0 ="},
        {"key Z", Kind::key, "0,0,0 0 90/0 ="},
        {"key backspace", Kind::key, "0,0,0 0 0/1 ="},
        {"type  100% # \"x\" ", Kind::type, "0,0,0 0 0/0 = 100% # \"x\" "},
        {"choose -", Kind::choose, "0,0,0 0 0/0 ="},
        {"choose \"-\" \"A # b\" # c", Kind::choose, "0,0,0 0 0/0 =<-><A # b>"},
        {R"(choose "say \"hi\\\" now" "12"mix" "")", Kind::choose,
         R"(0,0,0 0 0/0 =<say "hi\" now><12"mix><>)"},
        {"answer yes", Kind::answer, "0,0,1 0 0/0 ="},
        {"file  /tmp/a b #1.fxb ", Kind::file, "0,0,0 0 0/0 =/tmp/a b #1.fxb"},
        {"file -", Kind::file, "0,0,0 0 0/0 ="},
        {"idle 250", Kind::idle, "0,0,250 0 0/0 ="},
        {"play \"my loop.wav\" 1.5", Kind::play, "0,0,1.5 0 0/0 =my loop.wav"},
        {"bpm 133.5", Kind::bpm, "0,0,133.5 0 0/0 ="},
        {"set HOLD 0.25", Kind::set, "0,0,0 0 0/0 HOLD=0.25"},
        {"timebase 1/8T", Kind::timeBase, "0,0,0 0 0/0 =1/8T"},
        {"shot out#1.png", Kind::shot, "0,0,0 0 0/0 =out#1.png"},
    };
    for (const auto& one : cases)
    {
        SCOPED_TRACE(one.line);
        const auto steps = parseShotScript(one.line, "s");
        ASSERT_EQ(steps.size(), 1u);
        EXPECT_EQ(steps[0].kind, one.kind);
        EXPECT_EQ(shown(steps[0]), one.holds);
    }
}

TEST(ShotScript, LinesAreCounted)
{
    const auto steps =
        parseShotScript("\xEF\xBB\xBF# a script\r\n\r\nleave\r\n \t\n#\n  type \xC3\xA4\r\nidle 5", "s");
    ASSERT_EQ(steps.size(), 3u);
    EXPECT_EQ(steps[0].line, 3);
    EXPECT_EQ(steps[1].line, 6);
    EXPECT_EQ(steps[1].text, "\xC3\xA4");
    EXPECT_EQ(steps[2].line, 7);
    EXPECT_TRUE(parseShotScript("", "s").empty());
}

TEST(ShotScript, AMistakeIsNamedWithItsLine)
{
    const std::pair<std::string, const char*> cases[] = {
        {"move 1", "expected move X Y"},
        {"move 1 2 3", "expected move X Y"},
        {"move 1 2#", "Y takes a number"},
        {"move 1 nan", "Y takes a number"},
        {"leave now", "expected leave"},
        {"press", "expected press left|middle|right"},
        {"press Left", "no button \"Left\"; there are left, middle, right"},
        {"double right", "expected \"double left\""},
        {"modifiers shift,", "no modifier \"\""},
        {"modifiers none,shift", "no modifier \"none\""},
        {"wheel 1 2 1e9", "DISTANCE takes a number"},
        {"key enter", "no key \"enter\"; there are up, down"},
        {"key \"\"", "a key has a name"},
        {"type ", "expected type TEXT"},
        {"choose One", "a row stands in quotes"},
        {"choose \"One", "a quote that is not closed"},
        {"choose", "expected choose \"ROW\""},
        {"answer maybe", "no answer \"maybe\"; there are yes, no"},
        {"file", "expected file PATH, or file -"},
        {"idle 1.5", "MS takes a whole number"},
        {"idle -1", "MS takes a whole number"},
        {"play x.wav", "expected play FILE SECONDS"},
        {"shot a b.png", "expected shot FILE"},
        {"Move 1 2", "no step \"Move\"; there are move, leave"},
        {"type a\xFF", "the line is not UTF-8"},
        {std::string("type a\0b", 8), "the line has a control character"},
    };
    for (const auto& [line, said] : cases)
        try
        {
            parseShotScript("# first\n" + line + "\nleave", "a\nb");
            ADD_FAILURE() << line;
        }
        catch (const ToolError& error)
        {
            EXPECT_THAT(error.what(), testing::StartsWith("a?b:2: " + std::string(said)));
        }
    EXPECT_THROW(readShotScript("/no/such/script"), ToolError);
}
