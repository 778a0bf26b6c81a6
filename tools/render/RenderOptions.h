// SPDX-License-Identifier: GPL-3.0-or-later
// What "lodex render" is asked to do, and the command line's words for it.
#pragma once

#include "tools/render/Transport.h"

#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace lodex
{
struct RenderOptions
{
    struct Assignment // of a parameter; looked up once there is an engine
    {
        std::string id;
        std::string value;
    };

    std::string input;
    std::string output;
    std::string engine = "effect";
    Transport start; // tempo and position
    std::vector<int> blockSizes{512};
    std::string timeBase = "1/4"; // which the effect starts with, too
    std::string presetFile;       // empty: none given
    std::vector<Assignment> sets; // in the order of the command line
    std::string eventsFile;       // empty: none; and so for the next two
    std::string gainFile;
    std::string plotFile;
};

constexpr int largestBlockSize = 65536;

// Adds the options to a command. Parsing it then fills o, which outlives the command, and throws a
// ToolError for a word that can't be taken.
void addRenderOptions(CLI::App& command, RenderOptions& o);

// "512,64" as sizes.
std::vector<int> parseBlockSizes(const std::string& text);
// "ID=VALUE".
RenderOptions::Assignment parseAssignment(const std::string& text);
}
