// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/RenderOptions.h"

#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

#include <CLI/CLI.hpp>

namespace lodex
{
std::vector<int> parseBlockSizes(const std::string& text)
{
    std::vector<int> sizes;
    for (size_t start = 0; start <= text.size();)
    {
        const size_t end = std::min(text.find(',', start), text.size());
        const std::string size = text.substr(start, end - start);
        sizes.push_back(int(wholeNumberInRange("--block", size, 1, largestBlockSize)));
        start = end + 1;
    }
    return sizes;
}

RenderOptions::Assignment parseAssignment(const std::string& text)
{
    const size_t equals = text.find('=');
    if (equals == text.npos)
        throw ToolError("--set takes ID=VALUE, as in --set STRENGTH=0.8, not " + inQuotes(text));
    return {text.substr(0, equals), text.substr(equals + 1)};
}

static RenderOptions::Assignment parseLink(const std::string& text)
{
    if (text != "on" && text != "off")
        throw ToolError("--link takes on or off, not " + inQuotes(text));
    return {"LINKTIMES", text == "on" ? "1" : "0"};
}

void addRenderOptions(CLI::App& command, RenderOptions& o)
{
    const auto text = [&](const char* name, std::string& kept, const char* value, const char* description)
    { return command.add_option(name, kept, description)->type_name(value); };
    const auto parsed = [&](const char* name, auto take, const char* value, const char* description)
    { return command.add_option_function<std::string>(name, take, description)->type_name(value); };
    const auto number = [&](const char* name, double& kept, double lowest, double highest, const char* value,
                            const char* description)
    {
        const auto take = [=, &kept](const std::string& word)
        { kept = numberInRange(name, word, lowest, highest); };
        parsed(name, take, value, description);
    };
    const auto takeBlocks = [&o](const std::string& word) { o.blockSizes = parseBlockSizes(word); };
    const auto takeSet = [&o](const std::string& word) { o.sets.push_back(parseAssignment(word)); };
    const auto takeLink = [&o](const std::string& word) { o.sets.push_back(parseLink(word)); };
    constexpr double farthest = Transport::highestPosition;

    text("IN", o.input, "", "Audio file of one or two channels, in any format that libsndfile reads")
        ->required();
    text("OUT", o.output, "", "Ducked file to write: stereo WAV of 32-bit floats, at IN's rate")->required();
    number("--bpm", o.start.tempo, Transport::lowestTempo, Transport::highestTempo, "B",
           "Tempo in beats a minute (120)");
    number("--ppq", o.start.ppq, -farthest, farthest, "P",
           "Musical position of the first sample in quarter notes (0)");
    text("--timebase", o.timeBase, "NAME", "Note value from duck to duck, as 1/8T or \"1 Bar\" (1/4)");
    text("--preset", o.presetFile, "FILE",
         "Preset or state to begin with, of a bank its current one; see below");
    // With linked times the order of the sets matters; without this CLI11 takes the order of its options.
    parsed("--set", takeSet, "ID=VALUE", "Parameter and its value, any number of times; a wrong ID lists all")
        ->trigger_on_parse();
    parsed("--link", takeLink, "on|off", "Whether attack, hold and release keep their sum (on)")
        ->trigger_on_parse();
    text("--events", o.eventsFile, "FILE", "What changes on the way; see below");
    parsed("--block", takeBlocks, "N[,N...]", "Block size in frames, or several in turn (512)");
    text("--gain", o.gainFile, "FILE", "Write the gain record: mono WAV, -1 not ducked to 1 all ducked");
    text("--plot", o.plotFile, "FILE.png", "Write a picture of input, output and gain");
    text("--engine", o.engine, "NAME",
         "What renders: effect, in this process, or vst3, the built plug-in (effect)");
}
}
