// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/common/ToolError.h"
#include "tools/render/EventsFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using namespace lodex;
using testing::HasSubstr;

static const std::vector<ParameterInfo> parameters = {{"STRENGTH", 0.0f, 1.0f, 6},
                                                      {"ATTACKTIME", 0.0f, 300.0f, 1}};

static std::string complaint(const std::string& text)
{
    std::istringstream stream(text);
    try
    {
        parseEvents(stream, "moves.txt", parameters);
        return "accepted";
    }
    catch (const ToolError& error)
    {
        return error.what();
    }
}

TEST(EventsFile, SaysWhichLineIsWrongAndWhatWasExpected)
{
    const struct
    {
        const char* line;
        const char* expected;
    } cases[] = {
        {"on 5 play 1", "expected \"at SAMPLE ...\", not \"on\""},
        {"at -1 play 1", "not \"-1\""},
        {"at 99999999999999999999 play 1", "SAMPLE takes a whole number"},
        {"at 5", "expected set, tempo, play, ppq or timebase"},
        {"at 5 play 2", "play takes 0 or 1, not \"2\""},
        {"at 5 tempo 120 bpm", "not \"120 bpm\""},
        {"at 5 ppq nan", "ppq takes a number"},
        {"at 5 timebase 1/5", "1/16, 1/8, 1/4, 1/2, 1 Bar, 1/16T"},
        {"at 5 set STRENGTH", "STRENGTH takes a number from 0 to 1, not \"\""},
        {"at 5 set STRENGTH nan", "not \"nan\""},
        {"at 5 set strength 1", "no parameter \"strength\"; there are STRENGTH, ATTACKTIME"},
        {"at 4 play 1", "sample 4 stands behind sample 5"},
        {"at 5 \x1b[2J%n", "not \"?[2J%n\""},
    };
    for (const auto& each : cases)
    {
        const std::string answer =
            complaint(std::string("at 5 play 0\n# comment\n") + each.line + "\nat 9 play 1");
        EXPECT_THAT(answer, HasSubstr("moves.txt:3: "));
        EXPECT_THAT(answer, HasSubstr(each.expected));
    }
}
