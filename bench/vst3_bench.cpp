// SPDX-License-Identifier: GPL-3.0-or-later
// What the built bundle costs in a host: to make, initialise and destroy an object, its memory, and a block
// through the factory's object beside a plain delay with gain in the same run.
#include "bench/References.h"
#include "bench/Signals.h"
#include "tests/hosts/BundleHost.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <malloc.h>
#include <memory>

static const lodex::VST3Module& bundle()
{
    static const lodex::VST3Module module(LODEX_BUNDLE);
    return module;
}

// 500 at once, as in a large project; the time is that of one.
static void makeAndDestroy(benchmark::State& state)
{
    constexpr int count = 500;
    std::vector<std::unique_ptr<BundleHost>> hosts;
    for (auto _ : state)
    {
        for (int i = 0; i < count; ++i)
            hosts.push_back(std::make_unique<BundleHost>(bundle()));
        hosts.clear();
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * count);
}
BENCHMARK(makeAndDestroy);

static const bench::StereoSignal& noise()
{
    static const bench::StereoSignal signal(bench::Signal::noise);
    return signal;
}

static void copyIn(const bench::StereoSignal& signal, long position, int frames, float* left, float* right)
{
    std::copy_n(signal.left.data() + position % bench::signalFrames, frames, left);
    std::copy_n(signal.right.data() + position % bench::signalFrames, frames, right);
}

static void block(benchmark::State& state)
{
    const int frames = int(state.range(0));
    BundleHost host(bundle());
    host.setUp(44100.0, frames);
    host.context.tempo = 120.0;
    for (auto _ : state)
    {
        copyIn(noise(), host.context.projectTimeSamples, frames, host.channels[0].data(),
               host.channels[1].data());
        host.processFilled(frames);
        host.context.projectTimeSamples += frames;
        host.context.projectTimeMusic += frames / 22050.0;
    }
    state.SetItemsProcessed(state.iterations() * frames);
}
BENCHMARK(block)->Arg(64)->Arg(256)->Arg(1024);

static void refDelayWithGain(benchmark::State& state)
{
    const int frames = int(state.range(0));
    bench::DelayWithGain delay;
    std::vector<float> channels[4];
    for (std::vector<float>& each : channels)
        each.resize(size_t(frames));
    long position = 0;
    for (auto _ : state)
    {
        copyIn(noise(), position, frames, channels[0].data(), channels[1].data());
        const float* in[] = {channels[0].data(), channels[1].data()};
        float* out[] = {channels[2].data(), channels[3].data()};
        delay.process(in, out, frames);
        benchmark::ClobberMemory();
        position += frames;
    }
    state.SetItemsProcessed(state.iterations() * frames);
}
BENCHMARK(refDelayWithGain)->Arg(64)->Arg(256)->Arg(1024);

static void printMemory()
{
    constexpr int count = 500;
    std::vector<std::unique_ptr<BundleHost>> hosts(count);
    const auto inUse = [] { return mallinfo2().uordblks + mallinfo2().hblkhd; };
    const size_t before = inUse();
    for (auto& host : hosts)
        host = std::make_unique<BundleHost>(bundle());
    const size_t made = inUse();
    const auto kibibytes = [&](size_t now, size_t ofHost)
    { return (double(now - before) / count - double(ofHost)) / 1024.0; };
    std::printf("KiB an instance: %.1f made", kibibytes(made, sizeof(BundleHost)));
    for (const int frames : {256, 512, 1024})
    {
        for (auto& host : hosts)
            host->setUp(44100.0, frames);
        const size_t ofHost = sizeof(BundleHost) + 6 * size_t(frames + 1) * sizeof(float);
        std::printf(", %.1f for blocks of %d frames", kibibytes(inUse(), ofHost), frames);
    }
    std::printf("\n");
}

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    printMemory();
}
