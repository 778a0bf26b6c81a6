// SPDX-License-Identifier: GPL-3.0-or-later
// How long a scan of the library takes, beside a plain walk through the same folders.
#include "presets/IPresetEffect.h"
#include "presets/Single_CPresetInterface.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace fs = std::filesystem;

constexpr int numGroups = 50;
constexpr int presetsInGroup = 100;

struct NoEffect final : IPresetEffect
{
    void setPresetType(int) override {}
    long getDataChunk(char**) override { return 0; }
    void setDataChunk(char*, long) override {}
    void setPresetName(const char*) override {}
};

// A large library, which exists as long as the program runs.
class LibraryOnDisk
{
public:
    LibraryOnDisk()
    {
        std::string name = (fs::temp_directory_path() / "lodex-bench-XXXXXX").string();
        path = mkdtemp(name.data());
        for (int group = 0; group < numGroups; ++group)
        {
            const fs::path folder = path / ("Group " + std::to_string(group));
            fs::create_directory(folder);
            for (int i = 0; i < presetsInGroup; ++i)
                std::ofstream(folder / (nameOf(group * presetsInGroup + i) + ".dks"));
        }
    }
    ~LibraryOnDisk() { fs::remove_all(path); }
    LibraryOnDisk(const LibraryOnDisk&) = delete;
    LibraryOnDisk& operator=(const LibraryOnDisk&) = delete;

    fs::path path;

private:
    // In another order than on the disk.
    static std::string nameOf(int number) { return std::to_string(number * 7919 % 5000) + " Pumping"; }
};

static void walk(benchmark::State& state, const LibraryOnDisk* library)
{
    long count = 0;
    for (auto _ : state)
        for (const auto& entry : fs::recursive_directory_iterator(library->path))
            count += entry.is_regular_file() && entry.path().extension() == ".dks";
    if (count != state.iterations() * numGroups * presetsInGroup)
        state.SkipWithError("the walk missed some");
}

static void rescan(benchmark::State& state, const LibraryOnDisk* library)
{
    NoEffect effect;
    Single_CPresetInterface presets(effect);
    presets.setPresetFolder(library->path.c_str());
    for (auto _ : state)
        presets.rescanPresets();
    if (presets.getNumPresets() != numGroups * presetsInGroup)
        state.SkipWithError("the scan missed some");
}

// Prints the usual table and the ratio at its end.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.aggregate_name == "median" || run.repetitions == 1)
                milliseconds[run.run_name.function_name] = run.GetAdjustedRealTime();
    }

    void printRatio()
    {
        std::printf("\nScan of %d presets in %d subfolders: %.1f ms, %.2f of a plain walk.\n",
                    numGroups * presetsInGroup, numGroups, milliseconds["rescan"],
                    milliseconds["rescan"] / milliseconds["ref: walk"]);
    }

private:
    std::map<std::string, double> milliseconds;
};

int main(int argc, char** argv)
{
    const LibraryOnDisk library;
    benchmark::RegisterBenchmark("ref: walk", walk, &library)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("rescan", rescan, &library)->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatio();
}
