// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/command/BenchCommand.h"

#include "CORE/Numbers.h"
#include "tools/common/Interruption.h"
#include "tools/render/EffectEngine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <nlohmann/json.hpp>
#include <random>

namespace lodex
{
namespace
{
constexpr int rate = 44100;
constexpr int blockSize = 256;
constexpr int blocks = 2000; // a run: some twelve seconds of audio, with two dozen ducks
constexpr int runs = 15;

constexpr const char* example = R"(
Example:
  lodex bench --json
)";

// Five channels of a block, and their wiring.
struct Workbench
{
    Workbench()
    {
        std::minstd_rand random(1);
        std::uniform_real_distribution<float> noise(-1.0f, 1.0f);
        std::generate_n(memory[0], 2 * blockSize, [&] { return noise(random); });
        block.frames = blockSize;
        for (int i = 0; i < 2; ++i)
        {
            block.input[i] = memory[i];
            block.output[i] = memory[2 + i];
        }
        block.gainRecord = memory[4];
    }

    float memory[5][blockSize];
    RenderBlock block;
};

// What work, called once for each block, takes in nanoseconds a frame: the median of the runs.
template <typename Work>
double measure(Work work)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> costs;
    for (int run = 0; run < runs; ++run)
    {
        stopIfInterrupted();
        const auto start = Clock::now();
        for (int i = 0; i < blocks; ++i)
            work();
        const std::chrono::duration<double, std::nano> time = Clock::now() - start;
        costs.push_back(time.count() / (double(blocks) * blockSize));
    }
    std::nth_element(costs.begin(), costs.begin() + runs / 2, costs.end());
    return costs[runs / 2];
}

void printResult(const BenchResult& result, bool json)
{
    const double ratio = result.effect / result.copy;
    if (json)
    {
        const nlohmann::ordered_json object = {
            {"rate", rate},
            {"block", blockSize},
            {"effect_ns_per_frame", result.effect},
            {"copy_ns_per_frame", result.copy},
            {"ratio", ratio},
        };
        std::printf("%s\n", object.dump().c_str());
        return;
    }
    std::printf("effect      %s ns a frame\nplain copy  %s ns a frame\nratio       %s\n",
                Core::formatFixed(result.effect, 2).c_str(), Core::formatFixed(result.copy, 2).c_str(),
                Core::formatFixed(ratio, 1).c_str());
}
}

BenchResult measureEffect()
{
    Workbench bench;
    RenderBlock& block = bench.block;
    EffectEngine engine;
    engine.prepare(rate, blockSize);
    engine.reset();
    const double effect = measure(
        [&]
        {
            engine.process(block);
            block.first += blockSize;
            block.transport.advance(blockSize, rate);
        });
    const double copy = measure(
        [&]
        {
            for (int i = 0; i < 2; ++i)
                std::memcpy(block.output[i], block.input[i], sizeof bench.memory[i]);
            asm volatile("" : : "r"(&bench) : "memory"); // keeps the compiler from leaving the copy out
        });
    return {effect, copy};
}

void addBenchCommand(CLI::App& app)
{
    CLI::App* const command =
        app.add_subcommand("bench", "Measure one instance of the effect beside a plain copy");
    const auto json = std::make_shared<bool>(false);
    command->add_flag("--json", *json, "Print one JSON object");
    command->footer(example);
    command->final_callback([json] { printResult(measureEffect(), *json); });
}
}
