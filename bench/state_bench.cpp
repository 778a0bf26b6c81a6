// SPDX-License-Identifier: GPL-3.0-or-later
// What it costs to save and to load one state, beside the bare work of zlib on the same bytes.
#include "effect/instance/CQDT_DKS_Single.h"

#include <benchmark/benchmark.h>
#include <string>
#include <vector>
#include <zlib.h>

static std::string savedState()
{
    CQDT_DKS_Single effect(nullptr);
    char* chunk = nullptr;
    const long size = effect.getDataChunk(&chunk);
    return {chunk, size_t(size)};
}

static void save(benchmark::State& state)
{
    CQDT_DKS_Single effect(nullptr);
    char* chunk = nullptr;
    for (auto _ : state)
        benchmark::DoNotOptimize(effect.getDataChunk(&chunk));
}
BENCHMARK(save);

static void load(benchmark::State& state)
{
    CQDT_DKS_Single effect(nullptr);
    std::string chunk = savedState();
    for (auto _ : state)
        effect.setDataChunk(chunk.data(), long(chunk.size()));
}
BENCHMARK(load);

static void create(benchmark::State& state)
{
    for (auto _ : state)
        CQDT_DKS_Single effect(nullptr);
}
BENCHMARK(create);

// The reference: a state's records (15 parameters and 5 of the system, 64 bytes each), packed as one stream.
static std::vector<Bytef> records()
{
    std::vector<Bytef> bytes(20 * 64);
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = Bytef(i % 64 < 12 ? i * 7 % 61 + 'A' : 0);
    return bytes;
}

static void refCompress(benchmark::State& state)
{
    const std::vector<Bytef> raw = records();
    std::vector<Bytef> packed(raw.size() + 64);
    for (auto _ : state)
    {
        uLongf length = packed.size();
        benchmark::DoNotOptimize(compress2(packed.data(), &length, raw.data(), raw.size(), 9));
    }
}
BENCHMARK(refCompress);

BENCHMARK_MAIN();
