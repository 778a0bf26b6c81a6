#include "tools/RenderOptions.h"
#include "tools/ToolError.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lodex;
using testing::ElementsAre;
using testing::HasSubstr;

static RenderOptions parse(std::vector<std::string> words)
{
    RenderOptions options;
    CLI::App command;
    addRenderOptions(command, options);
    std::reverse(words.begin(), words.end()); // as CLI11 wants them
    command.parse(words);
    return options;
}

static std::vector<std::string> setsOf(const RenderOptions& options)
{
    std::vector<std::string> sets;
    for (const auto& each : options.sets)
        sets.push_back(each.id + '=' + each.value);
    return sets;
}

TEST(RenderOptions, HaveTheDefaultsThatTheHelpNames)
{
    const RenderOptions options = parse({"in.wav", "out.wav"});
    EXPECT_EQ(options.input, "in.wav");
    EXPECT_EQ(options.output, "out.wav");
    EXPECT_EQ(options.start.tempo, 120.0);
    EXPECT_EQ(options.start.ppq, 0.0);
    EXPECT_TRUE(options.start.playing);
    EXPECT_THAT(options.blockSizes, ElementsAre(512));
    EXPECT_EQ(options.timeBase, "1/4");
    EXPECT_EQ(options.engine, "effect");
}

TEST(RenderOptions, KeepSetsAndLinksInTheOrderOfTheCommandLine)
{
    const RenderOptions options = parse({"--set", "A=1", "in.wav", "--link", "off", "--set", "B==2", "--set",
                                         "A=", "--link=on", "out.wav", "--set", "C=-3"});
    EXPECT_THAT(setsOf(options), ElementsAre("A=1", "LINKTIMES=0", "B==2", "A=", "LINKTIMES=1", "C=-3"));
    EXPECT_EQ(options.input, "in.wav"); // a repeatable option eats no file
    EXPECT_EQ(options.output, "out.wav");
}

TEST(RenderOptions, ReadNumbers)
{
    const RenderOptions options =
        parse({"i", "o", "--bpm", "93.5", "--ppq", "-.5", "--block", "1,65536,64", "--timebase", "1 Bar T"});
    EXPECT_EQ(options.start.tempo, 93.5);
    EXPECT_EQ(options.start.ppq, -0.5);
    EXPECT_THAT(options.blockSizes, ElementsAre(1, 65536, 64));
    EXPECT_EQ(options.timeBase, "1 Bar T");
}

TEST(RenderOptions, RefuseWhatTheyCannotTakeAndSayWhatTheyTake)
{
    const struct
    {
        std::vector<std::string> words;
        const char* reason;
    } cases[] = {
        {{"--bpm", "0.99"}, "--bpm takes a number from 1 to 1000, not \"0.99\""},
        {{"--bpm", "1001"}, "--bpm takes"},
        {{"--bpm", "nan"}, "--bpm takes"},
        {{"--bpm", "120,5"}, "--bpm takes"},
        {{"--ppq", "later"}, "--ppq takes a number"},
        {{"--ppq", "inf"}, "--ppq takes a number"},
        {{"--block", "0"}, "--block takes a whole number from 1 to 65536, not \"0\""},
        {{"--block", "65537"}, "--block takes"},
        {{"--block", "64,"}, "not \"\""},
        {{"--block", "64.0"}, "not \"64.0\""},
        {{"--set", "STRENGTH"}, "--set takes ID=VALUE"},
        {{"--link", "yes"}, "--link takes on or off, not \"yes\""},
    };
    for (const auto& each : cases)
    {
        std::vector<std::string> words = {"in", "out"};
        words.insert(words.end(), each.words.begin(), each.words.end());
        try
        {
            parse(words);
            ADD_FAILURE() << each.words[0] << ' ' << each.words[1] << " was taken";
        }
        catch (const ToolError& error)
        {
            EXPECT_THAT(error.what(), HasSubstr(each.reason));
        }
    }
}
