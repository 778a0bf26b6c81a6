// SPDX-License-Identifier: GPL-3.0-or-later
// A plug-in's window in a VST 3 host on a real X server: what the user does, what the host hears, and what
// the window shows.
#include "pluginterfaces/gui/iplugviewcontentscalesupport.h"
#include "pluginterfaces/vst/ivstaudioprocessor.h"
#include "pluginterfaces/vst/ivsteditcontroller.h"
#include "pluginterfaces/vst/ivstprocesscontext.h"
#include "support/VST3HostFrame.h"
#include "tools/render/ParameterChanges.h"
#include "tools/render/VST3Module.h"
#include "windows/WindowTest.h"

#include <atomic>
#include <cmath>
#include <sstream>
#include <thread>

using namespace Steinberg;
using namespace Steinberg::Vst;

namespace
{
enum : ParamID
{
    level,
    time_,
    steps,
    power
};

// Writes down gestures as "begin 0", "perform 0 0.75", "end 0".
struct HostHandler final : lodex::Borrowed<IComponentHandler>, IComponentHandler2
{
    tresult PLUGIN_API queryInterface(const TUID id, void** object) override
    {
        QUERY_INTERFACE(id, object, FUnknown::iid, IComponentHandler)
        QUERY_INTERFACE(id, object, IComponentHandler::iid, IComponentHandler)
        QUERY_INTERFACE(id, object, IComponentHandler2::iid, IComponentHandler2)
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
    tresult PLUGIN_API beginEdit(ParamID id) override { return say("begin " + std::to_string(id)); }
    tresult PLUGIN_API performEdit(ParamID id, ParamValue value) override
    {
        last = value;
        std::ostringstream text;
        text << "perform " << id << ' ' << value;
        return say(text.str());
    }
    tresult PLUGIN_API endEdit(ParamID id) override { return say("end " + std::to_string(id)); }
    tresult PLUGIN_API restartComponent(int32) override { return kResultOk; }
    tresult PLUGIN_API setDirty(TBool) override { return say("dirty"); }
    tresult PLUGIN_API requestOpenEditor(FIDString) override { return kResultFalse; }
    tresult PLUGIN_API startGroupEdit() override { return kResultFalse; }
    tresult PLUGIN_API finishGroupEdit() override { return kResultFalse; }
    tresult say(const std::string& what)
    {
        log.push_back(what);
        return kResultOk;
    }

    Log log;
    double last = -1.0;
};

// One instance with its processing, and a frame for its window.
struct Instance
{
    Instance(const lodex::VST3Module& module, Tovra::RunLoop& loop)
        : component(module.createEffect()), processor(component), controller(component), frame(&loop)
    {
        component->initialize(nullptr);
        controller->setComponentHandler(&handler);
        ProcessSetup setup{kRealtime, kSample32, 64, 44100.0};
        processor->setupProcessing(setup);
        component->setActive(true);
        view = owned(controller->createView(ViewType::kEditor));
        view->setFrame(&frame);
    }
    ~Instance()
    {
        view = nullptr;
        controller->setComponentHandler(nullptr);
        component->terminate();
    }

    // A block of ones, with a value of the host's for one parameter if it is not below 0; the output.
    float process(ParamID id = level, double value = -1.0)
    {
        float in[2][64], out[2][64] = {};
        std::fill_n(in[0], 128, 1.0f);
        float *inputs[] = {in[0], in[1]}, *outputs[] = {out[0], out[1]};
        AudioBusBuffers buses[2];
        buses[0].numChannels = buses[1].numChannels = 2;
        buses[0].channelBuffers32 = inputs;
        buses[1].channelBuffers32 = outputs;
        ProcessContext context{};
        context.sampleRate = 44100.0;
        context.tempo = 120.0;
        lodex::ParameterChanges changes;
        if (value >= 0.0)
            changes.add(id, 0, value);
        ProcessData data;
        data.symbolicSampleSize = kSample32;
        data.numSamples = 64;
        data.numInputs = data.numOutputs = 1;
        data.inputs = buses;
        data.outputs = buses + 1;
        data.inputParameterChanges = &changes;
        data.processContext = &context;
        return processor->process(data) == kResultOk ? out[1][63] : NAN;
    }
    bool attach(void* parent) const
    {
        return view->attached(parent, kPlatformTypeX11EmbedWindowID) == kResultTrue;
    }
    double value(ParamID id) const { return controller->getParamNormalized(id); }

    IPtr<IComponent> component;
    FUnknownPtr<IAudioProcessor> processor;
    FUnknownPtr<IEditController> controller;
    VST3HostFrame frame;
    HostHandler handler;
    IPtr<IPlugView> view;
};

class VST3Window : public WindowTest
{
protected:
    VST3Window() { EXPECT_TRUE(plugin.attach(host->parent())); }

    // What the dial shows of LEVEL, 0 to 1.
    double shownLevel() const { return ((pixel(30, 30) >> 16) & 255) / 255.0; }
    bool shows(double expected)
    {
        return until([&] { return std::fabs(shownLevel() - expected) < 0.01; });
    }
    bool heard(const std::string& entry)
    {
        return until([&] { return std::count(hears().begin(), hears().end(), entry) > 0; });
    }
    Log& hears() { return plugin.handler.log; }

    lodex::VST3Module module{LODEX_WINDOW_PLUGIN};
    Instance plugin{module, loop};
};
}

TEST_F(VST3Window, GivesWhatTheUserDoesToTheHost)
{
    const struct
    {
        const char* name;
        std::vector<std::string> steps; // of xdotool, at the dial
        double value;
    } gestures[] = {
        {"drag", {"mousedown 1", "mousemove_relative -- 0 -50", "mouseup 1"}, 0.75},
        {"fine drag",
         {"keydown shift", "mousedown 1", "mousemove_relative -- 0 -50", "mouseup 1", "keyup shift"},
         0.525},
        {"wheel", {"click 4"}, 0.6},
        {"reset", {"click 2"}, 0.5},
        {"reset by control", {"keydown ctrl", "click 1", "keyup ctrl"}, 0.5},
    };
    for (const auto& gesture : gestures)
    {
        plugin.process(level, gesture.value == 0.5 ? 0.9 : 0.5);
        moveTo(30, 30);
        ASSERT_TRUE(shows(gesture.value == 0.5 ? 0.9 : 0.5)) << gesture.name;
        hears().clear();
        for (const std::string& step : gesture.steps)
            user(step);
        ASSERT_TRUE(heard("end 0")) << gesture.name;
        EXPECT_EQ(hears().front(), "begin 0");
        EXPECT_EQ(std::count(hears().begin(), hears().end(), "begin 0"), 1) << gesture.name;
        EXPECT_EQ(std::count(hears().begin(), hears().end(), "end 0"), 1) << gesture.name;
        EXPECT_NEAR(plugin.handler.last, gesture.value, 1e-6) << gesture.name;
        EXPECT_EQ(plugin.value(level), plugin.handler.last);
        EXPECT_NEAR(plugin.process(), gesture.value, 1e-6) << "what is heard is what is shown";
        EXPECT_TRUE(shows(gesture.value)) << gesture.name;
    }
}

TEST_F(VST3Window, TakesTextAndLeavesOtherKeysToTheHost)
{
    hears().clear();
    moveTo(60, 82);
    user("click --repeat 2 --delay 20 1");
    ASSERT_TRUE(until([&] { return hears().size() >= 2; }));
    user("type --delay 5 250");
    user("key Return");
    ASSERT_TRUE(until([&] { return std::fabs(plugin.value(time_) - 0.5) < 1e-6; })) << plugin.value(time_);
    ASSERT_TRUE(heard("end 1"));

    host->lines.clear();
    user("key g");
    EXPECT_TRUE(until([&] { return !host->lines.empty(); })) << "a key that nobody takes";

    hears().clear();
    click(90, 130); // LINK
    ASSERT_TRUE(heard("dirty"));
    EXPECT_EQ(hears(), Log({"dirty"})) << "no host automates it";
}

TEST_F(VST3Window, KeepsTheUsersValueWhileTheHostAutomates)
{
    moveTo(30, 30);
    user("mousedown 1");
    ASSERT_TRUE(heard("begin 0"));
    user("mousemove_relative -- 0 -60");
    ASSERT_TRUE(until([&] { return std::fabs(plugin.value(level) - 0.8) < 1e-6; }));
    plugin.process(level, 0.1);
    EXPECT_NEAR(plugin.value(level), 0.8, 1e-6) << "the host's value is passed over while the user drags";
    plugin.view->removed(); // in mid-drag
    EXPECT_TRUE(heard("end 0"));
    user("mouseup 1");
    plugin.process(level, 0.1);
    EXPECT_NEAR(plugin.value(level), 0.1, 1e-6);
    EXPECT_TRUE(plugin.frame.isIdle()) << "the host's loop has nothing left of a window that was removed";
    EXPECT_TRUE(plugin.attach(host->parent()));
    EXPECT_TRUE(shows(0.1));
}

TEST_F(VST3Window, MovesToAnotherWindowAndStandsBesideAnotherOne)
{
    HostWindow secondHost;
    Instance second(module, loop);
    second.process(level, 0.25);
    plugin.view->removed();
    EXPECT_TRUE(plugin.attach(secondHost.parent())); // which lies over the first one
    EXPECT_TRUE(second.attach(host->parent()));
    EXPECT_EQ(childrenOf(secondHost.window()).size(), 1u);
    EXPECT_EQ(childrenOf(host->window()).size(), 1u);
    EXPECT_TRUE(shows(0.5));
    secondHost.command("hide");
    EXPECT_TRUE(shows(0.25));
    plugin.process(level, 0.0);
    click(30, 130); // POWER of the second one
    EXPECT_TRUE(until([&] { return second.value(power) == 0.0; }));
    EXPECT_EQ(plugin.value(power), 1.0);

    const FUnknownPtr<IPlugViewContentScaleSupport> scaling(second.view);
    second.frame.log.clear();
    scaling->setContentScaleFactor(1.5f);
    EXPECT_EQ(second.frame.log, "450x300;");
    moveTo(45, 45); // (30, 30) in units
    user("click 4");
    EXPECT_TRUE(until([&] { return std::fabs(second.value(level) - 0.35) < 1e-6; }));
    host->command("destroy"); // without a word to the plug-in
    EXPECT_TRUE(until([&] { return !observer->exists(host->window()); }));
    second.view->removed();
}

TEST_F(VST3Window, OpensAndClosesWhileTheHostPlaysAndAutomates)
{
    constexpr int openings = 300;
    plugin.view->removed();
    std::atomic<bool> plays = true;
    std::atomic<int> wrong = 0, blocks = 0;
    std::thread audio(
        [&]
        {
            for (int i = 0; plays; ++i, ++blocks)
            {
                const double value = (i % 101) / 100.0;
                if (std::fabs(double(plugin.process(level, value)) - value) > 1e-6)
                    ++wrong;
                std::this_thread::yield();
            }
        });
    int opened = 0;
    for (int i = 0; i < openings; ++i)
    {
        const int before = blocks;
        opened += plugin.attach(host->parent());
        for (int turn = 0; turn < i % 4; ++turn)
            loop.runOnce(5);
        EXPECT_TRUE(until([&] { return blocks > before; }));
        EXPECT_EQ(plugin.view->removed(), kResultTrue);
        if (i % 10 == 0)
            plugin.view = owned(plugin.controller->createView(ViewType::kEditor)),
            plugin.view->setFrame(&plugin.frame);
    }
    plays = false;
    audio.join();
    EXPECT_EQ(opened, openings);
    EXPECT_EQ(wrong, 0) << "of " << blocks << " blocks";
    EXPECT_TRUE(plugin.frame.isIdle());
    EXPECT_TRUE(plugin.attach(host->parent()));
    plugin.process(level, 0.75);
    EXPECT_TRUE(shows(0.75));
}
