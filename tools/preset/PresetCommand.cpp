// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/preset/PresetCommand.h"

#include "tools/common/InputFile.h"
#include "tools/common/Interruption.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"
#include "tools/preset/PresetConversion.h"
#include "tools/preset/PresetEffect.h"
#include "tools/preset/PresetPrinting.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <optional>

namespace lodex
{
namespace
{
constexpr const char* forms = R"(
Files are known by their content: program and bank files, a VST 3 host's state, the bare chunk of a VST 2
host, and in each of them a preset, a bank, or a raw or tagged form of the older product.
)";

constexpr const char* showExample = R"(
The JSON of one preset: {"kind": "preset" | "state" | "legacy", "name": "...", "time_adjust": BEATS,
"parameters": {ID: NUMBER, ...}, "texts": {ID: "...", ...}}. "kind" is how it was taken, or "legacy" for the
older product's. Of a bank: {"kind": "bank" | "legacy", "current": INDEX, "presets": [ONE, ...]}, where
{"kind": "damaged", "reason": "..."} keeps the place of one that cannot be used. Texts of times are for 128
beats a minute, as the values are.

Example:
  lodex preset show "07-Deep Pump.dks" --json
)";

constexpr const char* convertExample = R"(
One preset is written to the file OUT, several to files in the folder OUT, which is made if it is missing:
01-Name.dks and so on. Nothing is written if one of these files is there, unless --force is given.

Example:
  lodex preset convert oldbank.fxb presets
)";

constexpr const char* checkExample = R"(
Prints one line a file, and exits with 1 if any is damaged.

Example:
  lodex preset check *.dks
)";

struct ShowOptions
{
    std::string file;
    std::optional<PresetType> taken; // not set: as such a file usually is
    bool json = false;
};

void warnOfDamage(const PresetFile& file, const std::string& path)
{
    if (!file.problem.empty())
        std::fprintf(stderr, "lodex: %s is damaged, and what is left was used: %s\n", printable(path).c_str(),
                     printable(file.problem).c_str());
}

void show(const ShowOptions& options)
{
    const PresetFile file = readPresetFile(options.file);
    const PresetType taken = options.taken.value_or(file.type);
    warnOfDamage(file, options.file);
    if (options.json)
        printJson(file, taken);
    else
        printTables(file, taken);
}

struct ConvertOptions
{
    std::string input, output;
    bool force = false;
};

void convert(const ConvertOptions& options)
{
    const PresetFile file = readPresetFile(options.input);
    const int written = convertPresets(file, options.output, options.force);
    warnOfDamage(file, options.input);
    std::printf("%s: %d preset%s\n", printable(options.output).c_str(), written, written == 1 ? "" : "s");
}

// What a file holds in a few words; a ToolError if it is damaged.
std::string verdict(const std::string& path)
{
    const PresetFile file = parsePresetFile(readInputFile(path));
    if (!file.problem.empty())
        throw ToolError(file.problem);
    const std::string older = file.isOlder ? "older " : "";
    if (file.isBank)
        return older + "bank of " + std::to_string(file.presets.size()) + " presets";
    return older + (file.type == PresetType::preset || file.isOlder ? "preset " : "state ") + '\'' +
           printable(contentOf(file, 0, file.type).name) + '\'';
}

void check(const std::vector<std::string>& paths)
{
    bool damaged = false;
    for (const std::string& path : paths)
    {
        stopIfInterrupted();
        std::string words;
        try
        {
            words = verdict(path);
        }
        catch (const ToolError& reason)
        {
            damaged = true;
            words = std::string("damaged: ") + reason.what();
        }
        std::printf("%s: %s\n", printable(path).c_str(), printable(words).c_str());
    }
    if (damaged)
        throw CLI::RuntimeError(1);
}

void addShow(CLI::App& preset)
{
    CLI::App* const command = preset.add_subcommand("show", "Show what a file of presets holds");
    const auto options = std::make_shared<ShowOptions>();
    command->add_option("FILE", options->file, "What to show")->required();
    const auto take = [options](const std::string& word)
    {
        if (word != "preset" && word != "state")
            throw ToolError("--as takes preset or state, not " + inQuotes(word));
        options->taken = word == "preset" ? PresetType::preset : PresetType::state;
    };
    command
        ->add_option_function<std::string>("--as", take,
                                           "Take the system settings from it (state) or not (preset)")
        ->type_name("preset|state");
    command->add_flag("--json", options->json, "Print one JSON object");
    command->footer(std::string(forms) +
                    "Program and bank files are taken as presets, all others as state, unless --as says "
                    "otherwise.\n" +
                    showExample);
    command->final_callback([options] { show(*options); });
}

void addConvert(CLI::App& preset)
{
    CLI::App* const command = preset.add_subcommand("convert", "Write current preset files");
    const auto options = std::make_shared<ConvertOptions>();
    command->add_option("IN", options->input, "Presets in any form")->required();
    command->add_option("OUT", options->output, "Preset file, or folder for several")->required();
    command->add_flag("--force", options->force, "Replace files that are there");
    command->footer(std::string(forms) + convertExample);
    command->final_callback([options] { convert(*options); });
}

void addCheck(CLI::App& preset)
{
    CLI::App* const command = preset.add_subcommand("check", "Say what files hold, and which are damaged");
    const auto paths = std::make_shared<std::vector<std::string>>();
    command->add_option("FILE", *paths, "What to look at")->required();
    command->footer(std::string(forms) + checkExample);
    command->final_callback([paths] { check(*paths); });
}
}

void addPresetCommand(CLI::App& app)
{
    CLI::App* const command = app.add_subcommand("preset", "Show, convert and check presets");
    command->require_subcommand(0, 1); // a missing one gets our own message, as for the whole command
    addShow(*command);
    addConvert(*command);
    addCheck(*command);
    command->final_callback(
        [command]
        {
            if (command->get_subcommands().empty())
                throw ToolError("a preset command is missing (see lodex preset --help)");
        });
}
}
