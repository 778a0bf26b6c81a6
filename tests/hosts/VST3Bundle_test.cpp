// SPDX-License-Identifier: GPL-3.0-or-later
// The built bundle as VST 3 hosts find, play, save and restore it.
#include "HostSDK/VST3/Text.h"
#include "hosts/BundleHost.h"

#include <cmath>
#include <cstring>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

using namespace Steinberg;
using namespace Steinberg::Vst;
using lodex::VST3Module;
using testing::ElementsAre;

namespace
{
constexpr int parameterCount = 11; // ten of the effect and the program
constexpr int strength = 6;
constexpr int bypass = 7;

class VST3Bundle : public testing::Test
{
protected:
    VST3Module module{LODEX_BUNDLE};
};

std::string hex(const TUID id)
{
    char text[33] = "";
    for (int i = 0; i < 16; ++i)
        std::snprintf(text + 2 * i, 3, "%02X", static_cast<unsigned char>(id[i]));
    return text;
}

std::vector<double> valuesOf(const BundleHost& host)
{
    std::vector<double> values;
    for (ParamID id = 0; id < parameterCount - 1; ++id)
        values.push_back(host.controller->getParamNormalized(id));
    return values;
}

bool isWrong(float sample)
{
    return !std::isfinite(sample) || std::fpclassify(sample) == FP_SUBNORMAL;
}
}

TEST_F(VST3Bundle, LetsOutNothingButTheEntries)
{
    const std::string object = LODEX_BUNDLE "/Contents/" LODEX_VST3_ARCHITECTURE "/Lodex.so";
    const std::string command = "nm -D --defined-only '" + object + "'";
    const std::unique_ptr<FILE, int (*)(FILE*)> list(popen(command.c_str(), "r"), pclose);
    ASSERT_NE(list, nullptr);
    std::vector<std::string> names;
    char address[64], kind[8], name[512];
    while (std::fscanf(list.get(), "%63s %7s %511s", address, kind, name) == 3)
        names.push_back(name);
    EXPECT_THAT(names, ElementsAre("GetPluginFactory", "ModuleEntry", "ModuleExit"));
}

TEST_F(VST3Bundle, SaysInItsFilesWhatItsFactorySays)
{
    std::ifstream file(LODEX_BUNDLE "/Contents/Resources/moduleinfo.json");
    const auto info = nlohmann::json::parse(file);
    const FUnknownPtr<IPluginFactory3> factory(&module.factory());
    ASSERT_TRUE(factory);
    PFactoryInfo maker;
    ASSERT_EQ(factory->getFactoryInfo(&maker), kResultOk);
    EXPECT_EQ(info["Factory Info"]["Vendor"], maker.vendor);
    ASSERT_EQ(factory->countClasses(), 1);
    PClassInfo2 effect;
    ASSERT_EQ(factory->getClassInfo2(0, &effect), kResultOk);
    const auto& entry = info["Classes"][0];
    EXPECT_EQ(entry["CID"], hex(effect.cid));
    EXPECT_EQ(hex(effect.cid), "536E76785452564E575250525154525A") << "projects find the plug-in by it";
    EXPECT_EQ(entry["Name"], effect.name);
    EXPECT_EQ(entry["Version"], effect.version);
    EXPECT_EQ(entry["Sub Categories"][0].get<std::string>() + "|" +
                  entry["Sub Categories"][1].get<std::string>(),
              effect.subCategories);
}

TEST_F(VST3Bundle, IsFoundWithTheSameBusesAndParametersAsEver)
{
    BundleHost host(module);
    const auto buses = [&](MediaType type, BusDirection direction)
    {
        std::vector<std::string> names;
        BusInfo info;
        for (int i = 0; host.component->getBusInfo(type, direction, i, info) == kResultOk; ++i)
            names.push_back(textOf(info.name) + " " + std::to_string(info.channelCount) +
                            (info.busType == kMain ? " main" : " aux") +
                            (info.flags == 1 ? "" : " inactive"));
        EXPECT_EQ(int(names.size()), host.component->getBusCount(type, direction));
        return names;
    };
    EXPECT_THAT(buses(kAudio, kInput), ElementsAre("Stereo In 2 main", "Sidechain 2 aux"));
    EXPECT_THAT(buses(kAudio, kOutput), ElementsAre("QDT Lodex Stereo Out 1 2 main"));
    EXPECT_TRUE(buses(kEvent, kInput).empty() && buses(kEvent, kOutput).empty());
    EXPECT_EQ(host.processor->getTailSamples(), 576000000u);
    EXPECT_EQ(host.processor->getLatencySamples(), 0u);

    // Projects keep automation by these ids: append, never reorder.
    const char* const titles[] = {"Trigger Sense", "Attack Time",   "Release Time", "Hold Time",
                                  "Attack Curve",  "Release Curve", "Strength",     "Bypass Sidechain",
                                  "ENVHOLD",       "CLICKFILTER",   "VST3PrgChange"};
    // By hand from range and default: of the sense (0.125 - 0.0039) / (2 - 0.0039), of the hold time 19 /
    // 199.
    const double defaults[] = {0.06066830, 0, 0.89583333, 0.09547739, 0.5, 0.5, 1, 0, 0, 0.25, 0};
    ASSERT_EQ(host.controller->getParameterCount(), parameterCount);
    for (int i = 0; i < parameterCount; ++i)
    {
        ParameterInfo info;
        ASSERT_EQ(host.controller->getParameterInfo(i, info), kResultOk);
        EXPECT_EQ(textOf(info.title), titles[i]);
        EXPECT_NEAR(info.defaultNormalizedValue, defaults[i], 1e-6) << titles[i];
        EXPECT_EQ(info.id, i < parameterCount - 1 ? ParamID(i) : 0x506C7374u);
        EXPECT_EQ((info.flags & ParameterInfo::kIsBypass) != 0, i == bypass);
    }
}

TEST_F(VST3Bundle, TakesWhatFitsAStereoPair)
{
    BundleHost host(module);
    using namespace SpeakerArr;
    const auto set = [&](std::vector<SpeakerArrangement> in, std::vector<SpeakerArrangement> out) {
        return host.processor->setBusArrangements(in.data(), int32(in.size()), out.data(), int32(out.size()));
    };
    EXPECT_EQ(set({kMono, kEmpty}, {kMono}), kResultTrue);
    EXPECT_EQ(set({k51, kStereo}, {kStereo}), kResultFalse);
    EXPECT_EQ(set({kStereo, kStereo, kStereo}, {kStereo}), kResultFalse);
    SpeakerArrangement now = 0;
    EXPECT_EQ(host.processor->getBusArrangement(kInput, 0, now), kResultTrue);
    EXPECT_EQ(now, kMono) << "a refusal changes nothing";
    EXPECT_EQ(set({}, {}), kResultTrue);
    EXPECT_NE(host.component->activateBus(kAudio, kInput, 2, true), kResultTrue);
}

TEST_F(VST3Bundle, PlaysAtEveryRateAndBlockSize)
{
    for (const double rate : {1234.0, 44100.0, 192000.0, 1228800.0})
    {
        SCOPED_TRACE(rate);
        BundleHost host(module);
        ASSERT_TRUE(host.setUp(rate, 8192));
        for (const int frames : {0, 1, 2, 33, 512, 8192, 8192, 8192, 1000})
        {
            for (ParamID id = 0; id < parameterCount - 1; ++id)
                host.changes.add(id, frames / 2, id == bypass ? 0.0 : host.position());
            ASSERT_EQ(host.process(frames), kResultOk);
            for (size_t channel : {4u, 5u})
                ASSERT_EQ(
                    std::count_if(host.channels[channel].begin(), host.channels[channel].end(), isWrong), 0);
        }
        host.hasContext = false;
        EXPECT_EQ(host.process(100), kResultOk);
        EXPECT_EQ(host.process(8193), kResultFalse);
    }
}

TEST_F(VST3Bundle, ReadsEveryParameterBackAfterAState)
{
    BundleHost host(module), other(module);
    for (int round = 0; round < 50; ++round)
    {
        for (ParamID id = 0; id < parameterCount - 1; ++id)
            host.changes.add(id, 0, host.position());
        host.flush();
        const std::string state = host.state();
        ASSERT_EQ(other.setState(state), kResultOk);
        ASSERT_EQ(valuesOf(other), valuesOf(host));
        ASSERT_EQ(other.state(), state);
    }
}

// A host may save and restore while it plays: what is not automated comes back, whenever it was saved.
TEST_F(VST3Bundle, SavesAndRestoresWhileAudioRuns)
{
    BundleHost host(module), other(module);
    ASSERT_TRUE(host.setUp(48000.0, 256));
    for (ParamID id = 0; id < parameterCount - 1; ++id)
        host.changes.add(id, 0, id == bypass ? 0.0 : host.position());
    host.flush();
    std::vector<double> expected = valuesOf(host);
    std::atomic<bool> done = false;
    {
        const std::jthread audio(
            [&]
            {
                while (!done)
                {
                    host.changes.add(strength, 17, host.position());
                    host.process(256);
                }
            });
        for (int i = 0; i < 200; ++i)
        {
            EXPECT_EQ(other.setState(host.state()), kResultOk);
            std::vector<double> values = valuesOf(other);
            values[strength] = expected[strength];
            EXPECT_EQ(values, expected);
            EXPECT_EQ(host.setState(other.state()), kResultOk);
            host.controller->setParamNormalized(0x506C7374, i % 32 / 32.0);
        }
        done = true;
    }
    expected[strength] = host.controller->getParamNormalized(strength);
    EXPECT_EQ(valuesOf(host), expected);
}

TEST_F(VST3Bundle, StartsAndStopsInEveryOrder)
{
    float samples[64] = {};
    float* mono = samples;
    AudioBusBuffers bus;
    bus.numChannels = 1;
    bus.channelBuffers32 = &mono;
    ProcessData data;
    data.numSamples = 64;
    data.numInputs = data.numOutputs = 1;
    data.inputs = data.outputs = &bus;
    const auto early = module.createEffect();
    EXPECT_EQ(FUnknownPtr<IAudioProcessor>(early)->process(data), kResultFalse) << "before initialize";

    BundleHost host(module);
    host.component->setActive(false);
    host.channels[0].resize(64);
    EXPECT_EQ(host.process(0), kResultOk) << "not set up, not active";
    ASSERT_TRUE(host.setUp(44100.0, 64));
    EXPECT_TRUE(host.setUp(96000.0, 512)) << "set up while active";
    EXPECT_EQ(host.process(512), kResultOk);

    std::vector<std::unique_ptr<BundleHost>> many;
    for (int i = 0; i < 8; ++i)
    {
        many.push_back(std::make_unique<BundleHost>(module));
        many.back()->setUp(44100.0, 64);
        many.back()->changes.add(6, 0, i / 8.0);
        many.back()->process(64);
    }
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(many[size_t(i)]->controller->getParamNormalized(6), i / 8.0);
}

TEST(VST3Module, LoadsAndUnloadsAHundredTimes)
{
    const auto mapped = []
    {
        std::ifstream maps("/proc/self/maps");
        std::stringstream text;
        text << maps.rdbuf();
        return text.str().find("Lodex.so") != std::string::npos;
    };
    for (int i = 0; i < 100; ++i)
    {
        const VST3Module module(LODEX_BUNDLE);
        BundleHost host(module);
        ASSERT_TRUE(host.setUp(44100.0, 64));
        ASSERT_EQ(host.process(64), kResultOk);
        ASSERT_TRUE(mapped());
    }
    EXPECT_FALSE(mapped()) << "it stays in the process";
    EXPECT_ANY_THROW(VST3Module("/nowhere/Lodex.vst3"));
}
