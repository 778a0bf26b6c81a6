#include "tools/EventsFile.h"
#include "tools/ToolError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using namespace lodex;
using testing::HasSubstr;

static const std::vector<ParameterInfo> parameters = {{"STRENGTH", 0.0f, 1.0f, 6},
                                                      {"ATTACKTIME", 0.0f, 300.0f, 1}};

static std::vector<Event> parse(const std::string& text)
{
    std::istringstream stream(text);
    return parseEvents(stream, "moves.txt", parameters);
}

static std::string complaint(const std::string& text)
{
    try
    {
        parse(text);
        return "accepted";
    }
    catch (const ToolError& error)
    {
        return error.what();
    }
}

TEST(EventsFile, ReadsEveryKindOfLine)
{
    using Kind = Event::Kind;
    const struct
    {
        const char* line;
        int64_t sample;
        Kind kind;
        int parameter;
        double value;
    } cases[] = {
        {"at 0 set ATTACKTIME 12.5", 0, Kind::set, 1, 12.5},
        {"at 4294967296 set STRENGTH 1", int64_t(1) << 32, Kind::set, 0, 1.0},
        {"\tat  7   tempo\t98.6 # slower \r", 7, Kind::tempo, 0, 98.6},
        {"at 7 play 0", 7, Kind::play, 0, 0.0},
        {"at 7 play 1#on", 7, Kind::play, 0, 1.0},
        {"at 7 ppq -4.25", 7, Kind::ppq, 0, -4.25},
        {"at 7 ppq +1e3", 7, Kind::ppq, 0, 1000.0},
        {"at 7 timebase 1/8D", 7, Kind::timeBase, 0, 0.75},
        {"at 7 timebase 1 Bar D ", 7, Kind::timeBase, 0, 6.0},
    };
    for (const auto& each : cases)
    {
        SCOPED_TRACE(each.line);
        const auto events = parse(std::string("# first\n\n") + each.line);
        ASSERT_EQ(events.size(), 1u);
        EXPECT_EQ(events[0].sample, each.sample);
        EXPECT_EQ(events[0].kind, each.kind);
        EXPECT_EQ(events[0].parameter, each.parameter);
        EXPECT_EQ(events[0].value, each.value);
    }
}

TEST(EventsFile, KeepsTheOrderOfLinesAtOneSample)
{
    const auto events = parse("at 5 tempo 100\nat 5 ppq 8\nat 5 tempo 90\n");
    ASSERT_EQ(events.size(), 3u);
    EXPECT_EQ(events[0].value, 100.0);
    EXPECT_EQ(events[1].value, 8.0);
    EXPECT_EQ(events[2].value, 90.0);
}

TEST(EventsFile, SaysWhichLineIsWrongAndWhatWasExpected)
{
    const struct
    {
        const char* line;
        const char* expected;
    } cases[] = {
        {"on 5 play 1", "expected \"at SAMPLE ...\", not \"on\""},
        {"at", "SAMPLE takes a whole number"},
        {"at -1 play 1", "not \"-1\""},
        {"at 1.5 play 1", "not \"1.5\""},
        {"at 99999999999999999999 play 1", "SAMPLE takes a whole number"},
        {"at 5", "expected set, tempo, play, ppq or timebase"},
        {"at 5 stop", "not \"stop\""},
        {"at 5 play", "expected \"at SAMPLE play 0|1\""},
        {"at 5 play 2", "play takes 0 or 1, not \"2\""},
        {"at 5 tempo 0", "tempo takes a number from 1 to 1000, not \"0\""},
        {"at 5 tempo 120 bpm", "not \"120 bpm\""},
        {"at 5 tempo 0x50", "not \"0x50\""},
        {"at 5 ppq nan", "ppq takes a number"},
        {"at 5 ppq 1e7", "from -1e+06 to 1e+06"},
        {"at 5 timebase 1/5", "1/16, 1/8, 1/4, 1/2, 1 Bar, 1/16T"},
        {"at 5 set", "expected \"at SAMPLE set ID VALUE\""},
        {"at 5 set STRENGTH", "STRENGTH takes a number from 0 to 1, not \"\""},
        {"at 5 set STRENGTH 1.01", "STRENGTH takes a number from 0 to 1, not \"1.01\""},
        {"at 5 set STRENGTH nan", "not \"nan\""},
        {"at 5 set ATTACKTIME inf", "from 0 to 300"},
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
