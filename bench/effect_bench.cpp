// SPDX-License-Identifier: GPL-3.0-or-later
// What the effect costs, in nanoseconds a frame and as a ratio to the least that such an effect can do,
// measured in the same run. Every figure of docs/performance.md comes from here.
#include "bench/References.h"
#include "bench/Signals.h"
#include "effect/instance/CQDT_DKS_Single.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <map>
#include <string>

using bench::Signal;
using bench::StereoSignal;

constexpr double tempo = 120.0;
constexpr double framesPerBeat = 22050.0; // at 44100 Hz

static const StereoSignal& signal(Signal kind)
{
    static const StereoSignal noise(Signal::noise), tail(Signal::tail);
    return kind == Signal::noise ? noise : tail;
}

// A transport that plays an effect over a signal.
struct Session
{
    CQDT_DKS_Single effect{nullptr};
    const StereoSignal& source;
    int frames;
    std::vector<float> left, right;
    long position = 0;

    Session(const StereoSignal& played, int blockFrames)
        : source(played), frames(blockFrames), left(size_t(blockFrames)), right(size_t(blockFrames))
    {
        effect.setSampleRate(44100.0f);
        effect.setBlockSize(frames);
        effect.reset();
    }

    void setCurves(float curve)
    {
        effect.getParameterProperty("ATTACKTIME")->setValue(30.0f);
        effect.getParameterProperty("ATTACKCRUVE")->setValue(curve);
        effect.getParameterProperty("RELEASECURVE")->setValue(curve);
    }

    void block()
    {
        const long at = position % bench::signalFrames;
        float* in[] = {const_cast<float*>(&source.left[size_t(at)]),
                       const_cast<float*>(&source.right[size_t(at)])};
        float* out[] = {left.data(), right.data()};
        Orbel::AudioBusInformation info(in, 1, out, 1, frames);
        info.timeInfo.tempo = float(tempo);
        info.timeInfo.playing = true;
        info.timeInfo.ppqPosition = double(position) / framesPerBeat;
        effect.processAudio(info);
        position += frames;
    }
};

// The references.

static void copyOfTheBlock(benchmark::State& state, int frames)
{
    const StereoSignal& source = signal(Signal::noise);
    std::vector<float> left(static_cast<size_t>(frames)), right(left);
    long position = 0;
    for (auto _ : state)
    {
        const float* in[] = {&source.left[size_t(position)], &source.right[size_t(position)]};
        float* out[] = {left.data(), right.data()};
        bench::copyBlock(in, out, frames);
        benchmark::ClobberMemory();
        position = (position + frames) % bench::signalFrames;
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * frames);
}

static void delayWithGain(benchmark::State& state, int frames)
{
    const StereoSignal& source = signal(Signal::noise);
    bench::DelayWithGain delay;
    std::vector<float> left(static_cast<size_t>(frames)), right(left);
    long position = 0;
    for (auto _ : state)
    {
        const float* in[] = {&source.left[size_t(position)], &source.right[size_t(position)]};
        float* out[] = {left.data(), right.data()};
        delay.process(in, out, frames);
        benchmark::ClobberMemory();
        position = (position + frames) % bench::signalFrames;
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * frames);
}

static void gainMeterChain(benchmark::State& state, int frames)
{
    std::vector<float> gain(static_cast<size_t>(frames), 0.25f);
    float meter = 0.0f;
    for (auto _ : state)
        benchmark::DoNotOptimize(meter = bench::gainMeterChain(meter, gain.data(), frames));
    state.SetItemsProcessed(int64_t(state.iterations()) * frames);
}

// The whole effect.

static void processAudio(benchmark::State& state, Signal kind, float curve, int frames)
{
    Session session(signal(kind), frames);
    if (curve != 0.0f)
        session.setCurves(curve);
    for (auto _ : state)
        session.block();
    state.SetItemsProcessed(int64_t(state.iterations()) * frames);
}

// The cost of each block of eight beats, the best of many rounds, so that what interrupts the machine
// drops out: the slowest block beside the median. A beat isn't a whole count of blocks, so each round
// has the same blocks only because it begins anew.
static void worstBlock(benchmark::State& state, Signal kind, float curve, int frames)
{
    constexpr int rounds = 40;
    std::vector<double> best(size_t(8 * framesPerBeat) / size_t(frames), 1e9);
    for (auto _ : state)
        for (int round = 0; round < rounds; ++round)
        {
            Session session(signal(kind), frames);
            if (curve != 0.0f)
                session.setCurves(curve);
            session.block();
            for (double& each : best)
            {
                const auto start = std::chrono::steady_clock::now();
                session.block();
                const std::chrono::duration<double, std::nano> time =
                    std::chrono::steady_clock::now() - start;
                each = std::min(each, time.count());
            }
        }
    std::sort(best.begin(), best.end());
    state.counters["worst/median"] = best.back() / best[best.size() / 2];
}

// The ducker alone, in each of the states that it spends its time in.

enum class Part
{
    idle,
    straight,
    late,
    early,
    preFade
};

static void ducker(benchmark::State& state, Part part)
{
    constexpr int frames = 256;
    CBusSidechainFx fx;
    fx.setTempo(float(tempo));
    fx.setTimeAdjust(64.0f); // so long a cycle that one segment lasts
    fx.setPreFadeLength(part == Part::preFade ? 1 << 30 : 130);
    fx.setParameter(CBusSidechainFx::holdTime, 1.0f);
    fx.setParameter(CBusSidechainFx::releaseTime, 450.0f);
    const float curve = part == Part::late ? 3.0f : (part == Part::early ? -3.0f : 0.0f);
    fx.setParameter(CBusSidechainFx::releaseCurve, curve);
    fx.reset();

    std::vector<float> left(frames), right(frames), record(frames);
    float* channels[] = {left.data(), right.data()};
    Orbel::AudioStereoBus bus;
    bus.createBusWithExternalBuffer(channels, frames);
    const StereoSignal& source = signal(Signal::noise);
    long blocks = 0;
    for (auto _ : state)
    {
        if (part != Part::idle && blocks++ % 4000 == 0)
            fx.setTriggers(0);
        std::copy_n(source.left.data(), frames, left.data()); // else the gain would wear the signal out
        std::copy_n(source.right.data(), frames, right.data());
        fx.process(bus, record.data(), frames);
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * frames);
}

// Names tell what is compared: "<case>/<frames>", the references with a "ref" in front.

static void registerAll()
{
    for (const int frames : {64, 256, 1024})
    {
        const std::string size = "/" + std::to_string(frames);
        const auto add = [&](const char* name, auto function, auto... arguments)
        { benchmark::RegisterBenchmark((name + size).c_str(), function, arguments..., frames); };
        add("ref: copy", copyOfTheBlock);
        add("ref: delay with gain", delayWithGain);
        add("ref: meter chain", gainMeterChain);
        add("effect, noise, straight", processAudio, Signal::noise, 0.0f);
        add("effect, noise, late curves", processAudio, Signal::noise, 3.0f);
        add("effect, noise, early curves", processAudio, Signal::noise, -3.0f);
        add("effect, tail, straight", processAudio, Signal::tail, 0.0f);
    }
    for (const auto& [name, part] : {std::pair("idle", Part::idle),
                                     {"straight", Part::straight},
                                     {"late curve", Part::late},
                                     {"early curve", Part::early},
                                     {"pre-fade", Part::preFade}})
        benchmark::RegisterBenchmark((std::string("ducker, ") + name + "/256").c_str(), ducker, part);
    const auto worst = [](const char* name, Signal kind)
    { benchmark::RegisterBenchmark(name, worstBlock, kind, 0.0f, 256)->Iterations(1); };
    worst("worst block, noise", Signal::noise);
    worst("worst block, tail", Signal::tail);
}

// Prints the usual table and collects it, for the ratios at the end.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
        {
            const auto items = run.counters.find("items_per_second");
            const bool median = run.aggregate_name == "median" || run.repetitions == 1;
            if (median && items != run.counters.end())
                nanoseconds[run.run_name.function_name + run.run_name.args] = 1e9 / items->second;
        }
    }

    void printRatios() const
    {
        std::printf("\n| case | ns a frame | to the floor | to a copy |\n| --- | --- | --- | --- |\n");
        for (const auto& [name, cost] : nanoseconds)
        {
            const std::string size = name.substr(name.find('/'));
            std::printf("| %s | %.2f | %.2f | %.1f |\n", name.c_str(), cost, cost / floorOf(size),
                        cost / at("ref: copy" + size));
        }
        std::printf("\nFloor: the larger of delay with gain and meter chain, at the same block size.\n");
        std::printf("Subnormal tail to noise at 256 frames: %.2f\n",
                    at("effect, tail, straight/256") / at("effect, noise, straight/256"));
    }

private:
    double at(const std::string& name) const
    {
        const auto found = nanoseconds.find(name);
        return found == nanoseconds.end() ? NAN : found->second;
    }

    double floorOf(const std::string& size) const
    {
        return std::max(at("ref: delay with gain" + size), at("ref: meter chain" + size));
    }

    std::map<std::string, double> nanoseconds;
};

int main(int argc, char** argv)
{
    registerAll();
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
}
