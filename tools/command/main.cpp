// SPDX-License-Identifier: GPL-3.0-or-later
// The lodex command: the plug-in without a workstation.

#include "Orbel/contract/OrbelFactory.h"
#include "editor/wireUp.h"
#include "tools/command/BenchCommand.h"
#include "tools/common/Interruption.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"
#include "tools/preset/PresetCommand.h"
#include "tools/render/RenderCommand.h"

#include <CLI/CLI.hpp>
#include <cstdio>

namespace
{
constexpr int failed = 2; // exit code of whatever could not be done

std::string version()
{
    Orbel::OrbelPluginList list;
    getOrbelPluginList(list);
    return std::string(list[0].name) + ' ' + list[0].versionString;
}

int fail(const std::string& reason)
{
    std::fprintf(stderr, "lodex: %s\n", lodex::printable(reason).c_str());
    return failed;
}

int run(int argc, char** argv)
{
    CLI::App app("QDT Lodex ducks music on the beat. This is the plug-in without a workstation.", "lodex");
    app.set_version_flag("--version", version());
    app.require_subcommand(0, 1); // 0: CLI11's own message would call a misspelt command missing, too
    app.footer("\nlodex COMMAND --help shows the options of a command, and an example.");
    lodex::addRenderCommand(app);
    lodex::addPresetCommand(app);
    lodex::addBenchCommand(app);
    try
    {
        app.parse(argc, argv);
        return app.get_subcommands().empty() ? fail("a command is missing (see lodex --help)") : 0;
    }
    catch (const CLI::RuntimeError& answer) // of a command that has printed its message itself
    {
        return answer.get_exit_code();
    }
    catch (const CLI::ParseError& error)
    {
        if (error.get_exit_code() == 0) // --help and --version
            return app.exit(error);
        return fail(std::string(error.what()) + " (see lodex --help)");
    }
}
}

int main(int argc, char** argv)
{
    wireUp();
    try
    {
        lodex::noteInterruptions();
        return run(argc, argv);
    }
    catch (const lodex::Interrupted& interrupted)
    {
        fail("interrupted, nothing was written");
        return 128 + interrupted.signal;
    }
    catch (const std::exception& error)
    {
        return fail(error.what());
    }
}
