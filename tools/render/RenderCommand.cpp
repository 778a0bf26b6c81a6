// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/render/RenderCommand.h"

#include "CORE/Numbers.h"
#include "tools/common/Interruption.h"
#include "tools/common/OutputFile.h"
#include "tools/common/ProgressBar.h"
#include "tools/common/Text.h"
#include "tools/common/TimeBase.h"
#include "tools/common/ToolError.h"
#include "tools/preset/PresetEffect.h"
#include "tools/render/AudioFile.h"
#include "tools/render/EventsFile.h"
#include "tools/render/GainSummary.h"
#include "tools/render/Plot.h"
#include "tools/render/RenderEngine.h"
#include "tools/render/Renderer.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>

namespace lodex
{
namespace
{
constexpr const char* examples = R"(
Example:
  lodex render pad.flac ducked.wav --bpm 126 --timebase 1/8 --set STRENGTH=0.8 --plot ducked.png

The effect starts with the time base, then takes the preset, then each set in its order. A preset has a
time base of its own, which replaces that of --timebase. What --preset reads is what "lodex preset show"
shows, and in the same way: files as presets, a host's state with its system settings.

An events file has one event a line, sorted by SAMPLE, and comments behind #:
  at SAMPLE set ID VALUE       at SAMPLE play 0|1        at SAMPLE timebase NAME
  at SAMPLE tempo BPM          at SAMPLE ppq POSITION
A set takes effect at its sample. All others end the block before it and begin a new one. Of several
sets of one parameter within a block only the last counts, as in a host.

The engine vst3 goes through the built plug-in, as a host does: there is no gain record, and events set only
what hosts can automate and not the time base. It takes the bundle of its own build or installation, else the
user's, or the one that LODEX_VST3 names.
)";

// A file that a render writes besides OUT, if it is asked to.
template <typename Content>
struct Extra
{
    std::optional<OutputFile> file;
    std::optional<Content> content;
};

void requireDifferentFiles(const RenderOptions& options)
{
    const std::pair<const char*, const std::string*> outputs[] = {
        {"OUT", &options.output}, {"--gain", &options.gainFile}, {"--plot", &options.plotFile}};
    const auto place = [](const std::string& path)
    {
        std::error_code ignored;
        return std::filesystem::weakly_canonical(std::filesystem::absolute(path, ignored), ignored);
    };
    for (const auto& [name, path] : outputs)
        for (const auto& [otherName, otherPath] : outputs)
            if (path < otherPath && !path->empty() && place(*path) == place(*otherPath))
                throw ToolError(std::string(name) + " and " + otherName +
                                " are the same file: " + printable(*path));
}

// What a render begins with: how the engine loads it, and the time base that it brings.
struct StartPreset
{
    std::vector<std::string> chunks;
    PresetType type;
    std::string timeBase;
};

std::optional<StartPreset> readStartPreset(const std::string& path)
{
    if (path.empty())
        return std::nullopt;
    const PresetFile file = readPresetFile(path);
    const auto index = size_t(file.current); // wraps if it is below 0
    if (index >= file.presets.size() || file.presets[index].chunk.empty())
        throw ToolError("cannot read " + printable(path) + ": the current preset of the bank, " +
                        std::to_string(file.current) + ", is missing or damaged");
    PresetEffect effect;
    effect.load(file, index, file.type);
    return StartPreset{file.chunks(index, file.type), file.type, nameOfTimeBase(effect.content().timeBase)};
}

std::unique_ptr<RenderEngine> prepareEngine(const RenderOptions& options,
                                            const std::optional<StartPreset>& preset, int rate)
{
    auto engine = createRenderEngine(options.engine);
    const auto& sizes = options.blockSizes;
    engine->prepare(rate, *std::max_element(sizes.begin(), sizes.end()));
    engine->setTimeBase(timeBaseByName(options.timeBase));
    if (preset)
        for (const std::string& chunk : preset->chunks)
            engine->loadPreset(chunk, preset->type);
    for (const RenderOptions::Assignment& each : options.sets)
        engine->set(resolveSet(engine->parameters(), each.id, each.value));
    engine->reset();
    return engine;
}

// The files of a render, open before it begins.
class Outputs
{
public:
    Outputs(const RenderOptions& options, const std::string& timeBase, const AudioReader& input)
        : file(options.output), sound(file, input.rate(), 2, input.length())
    {
        if (!options.gainFile.empty())
            gain.content.emplace(gain.file.emplace(options.gainFile), input.rate(), 1, input.length());
        if (!options.plotFile.empty())
        {
            plot.file.emplace(options.plotFile);
            const std::string title = std::filesystem::path(options.input).filename().string();
            plot.content.emplace(
                Plot::Setup{title, timeBase, options.start.tempo, input.rate(), input.length()});
        }
    }

    void add(const RenderBlock& block)
    {
        sound.write(block.output, block.frames);
        if (gain.content)
            gain.content->write(&block.gainRecord, block.frames);
        if (plot.content)
            plot.content->add(block);
    }

    // All are complete on the disk before the first one takes its place.
    void finish()
    {
        sound.finish();
        if (gain.content)
            gain.content->finish();
        if (plot.content)
        {
            const auto picture = plot.content->png();
            plot.file->write(picture.data(), picture.size());
        }
        OutputFile* const files[] = {&file, gain.file ? &*gain.file : nullptr,
                                     plot.file ? &*plot.file : nullptr};
        for (OutputFile* each : files)
            if (each)
                each->flush();
        for (OutputFile* each : files)
            if (each)
                each->commit();
    }

private:
    OutputFile file;
    AudioWriter sound;
    Extra<AudioWriter> gain;
    Extra<Plot> plot;
};
}

static void requireGain(const RenderEngine& engine, const RenderOptions& options)
{
    if (!engine.recordsGain() && !(options.gainFile.empty() && options.plotFile.empty()))
        throw ToolError("the engine " + inQuotes(options.engine) +
                        " has no gain record: --gain and --plot need the engine \"effect\"");
}

void render(const RenderOptions& options)
{
    requireDifferentFiles(options);
    const auto preset = readStartPreset(options.presetFile);
    AudioReader input(options.input);
    const auto engine = prepareEngine(options, preset, input.rate());
    requireGain(*engine, options);
    std::vector<Event> events;
    if (!options.eventsFile.empty())
        events = readEventsFile(options.eventsFile, engine->parameters());

    Outputs outputs(options, preset ? preset->timeBase : options.timeBase, input);
    GainSummary summary;
    int64_t frames = 0;
    {
        ProgressBar progress(input.length());
        Renderer renderer(*engine, input.rate(), options.start, options.blockSizes, events);
        renderer.run([&](float* left, float* right, int count) { return input.read(left, right, count); },
                     [&](const RenderBlock& block)
                     {
                         stopIfInterrupted();
                         outputs.add(block);
                         if (engine->recordsGain())
                             summary.add(block.gainRecord, block.frames);
                         frames += block.frames;
                         progress.show(frames);
                     });
    }
    outputs.finish();
    const std::string ducks = engine->recordsGain() ? ", " + summary.text() : "";
    std::printf("%s: %s s at %d Hz%s\n", printable(options.output).c_str(),
                Core::formatFixed(double(frames) / input.rate(), 2).c_str(), input.rate(), ducks.c_str());
}

void addRenderCommand(CLI::App& app)
{
    CLI::App* const command = app.add_subcommand("render", "Duck an audio file");
    const auto options = std::make_shared<RenderOptions>();
    addRenderOptions(*command, *options);
    command->footer(examples);
    command->final_callback([options] { render(*options); });
}
}
