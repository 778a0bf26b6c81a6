// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostSDK/VST3/Text.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3_EditorView.h"
#include "Orbel/Wrapper/VST3/VST3Driver.h"
#include "support/AdapterContract.h"
#include "support/VST3HostFrame.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Orbel;
using namespace vst3_host;
using testing::ElementsAre;

INSTANTIATE_TYPED_TEST_SUITE_P(VST3, AdapterContract, VST3Driver);

namespace
{
// The host's side of the controller.
struct Handler : Mine<IComponentHandler>, IUnitHandler
{
    tresult PLUGIN_API queryInterface(const TUID id, void** object) override
    {
        if (!FUnknownPrivate::iidEqual(id, IUnitHandler::iid))
            return Mine<IComponentHandler>::queryInterface(id, object);
        *object = static_cast<IUnitHandler*>(this);
        return kResultOk;
    }
    uint32 PLUGIN_API addRef() override { return 1; }
    uint32 PLUGIN_API release() override { return 1; }
    tresult PLUGIN_API beginEdit(ParamID id) override { return say("begin", int(id)); }
    tresult PLUGIN_API performEdit(ParamID id, ParamValue value) override
    {
        return say("perform", int(id), int(100 * value));
    }
    tresult PLUGIN_API endEdit(ParamID id) override { return say("end", int(id)); }
    tresult PLUGIN_API restartComponent(int32 flags) override { return say("restart", flags); }
    tresult PLUGIN_API notifyUnitSelection(UnitID unit) override { return say("unit", unit); }
    tresult PLUGIN_API notifyProgramListChange(ProgramListID list, int32 program) override
    {
        return say(list == ProgramListID(Orbel_VST3::kProgramList) ? "list" : "?", program);
    }
    tresult say(const char* what, int number, int other = 0)
    {
        log += std::string(what) + " " + std::to_string(number) + (other ? " " + std::to_string(other) : "") +
               ";";
        return kResultOk;
    }

    std::string log;
};

class Orbel_VST3Test : public testing::Test
{
protected:
    Orbel_VST3Test() { RecordingEffect::plan = {}; }

    void make()
    {
        ASSERT_TRUE(host.make());
        ASSERT_TRUE(host.setUp(48000.0, 500));
        adapter = host.adapter;
    }
    RecordingEffect& effect() { return *RecordingEffect::latest; }

    // A block of ones from each of so many channels, in place; -1 stands for no bus at all. left and right
    // then hold what came out.
    tresult process(int frames, std::vector<Queue> queues = {}, int inputChannels = 2, int outputChannels = 2)
    {
        effect().pieces.clear();
        effect().midi.clear();
        left.assign(size_t(std::max(frames, 0)) + 1, 1.0f);
        right = left;
        HostBlock block{frames, {left.data(), right.data()}, {left.data(), right.data()}};
        block.inputs.resize(size_t(std::max(inputChannels, 0)));
        block.outputs.resize(size_t(std::max(outputChannels, 0)));
        host.changes.queues = std::move(queues);
        return host.call(block, inputChannels >= 0, outputChannels >= 0);
    }
    std::vector<int> lengths()
    {
        std::vector<int> all;
        for (const auto& piece : effect().pieces)
            all.push_back(piece.frames);
        return all;
    }
    float level() { return effect().properties[0]->getCurrentValue(); }

    VST3Driver host;
    IPtr<Orbel_VST3> adapter;
    std::vector<float> left, right;
};
}

TEST_F(Orbel_VST3Test, TakesTheLastPointOfAQueueAtItsOffset)
{
    make();
    EXPECT_EQ(process(100, {{0, {{10, 0.1}, {20, 0.2}, {60, 1.0}}}}), kResultOk);
    EXPECT_THAT(lengths(), ElementsAre(60, 1, 39));
    EXPECT_EQ(effect().pieces[1].level, 10.0f);
    effect().takeLog();
    process(100, {{0, {{50, 1.0}}}, {0, {}}, {77, {{1, 0.5}}}, {Orbel_VST3::kProgramList, {{2, 0.75}}}});
    EXPECT_THAT(lengths(), ElementsAre(100))
        << "no event: the present value, no point, no parameter, a program";
    EXPECT_EQ(effect().takeLog(), "") << "and the program has not changed";
    process(100, {{0, {{100, 0.0}}}});
    EXPECT_THAT(lengths(), ElementsAre(99, 1)) << "beyond the block is its last sample";
}

TEST_F(Orbel_VST3Test, SplitsABlockOfTwoDesiredSizes)
{
    RecordingEffect::plan.desired = 200;
    make();
    process(399);
    EXPECT_THAT(lengths(), ElementsAre(399));
    process(400);
    EXPECT_THAT(lengths(), ElementsAre(200, 200));
}

TEST_F(Orbel_VST3Test, TellsTheEffectTheTime)
{
    make();
    process(64);
    EXPECT_EQ(effect().time.tempo, 120.0f);
    EXPECT_FALSE(effect().time.playing);

    ProcessContext music{};
    music.state = ProcessContext::kPlaying | ProcessContext::kCycleActive | ProcessContext::kRecording;
    music.sampleRate = 24000.0; // which alone decides the advance
    music.projectTimeSamples = -100;
    music.projectTimeMusic = -0.25;
    music.barPositionMusic = -4.0;
    music.tempo = 60.0;
    host.context = &music;
    process(100, {{0, {{25, 1.0}}}});
    ASSERT_THAT(lengths(), ElementsAre(25, 1, 74));
    EXPECT_EQ(effect().pieces[0].samplePosition, -100.0);
    EXPECT_EQ(effect().pieces[1].samplePosition, -75.0);
    EXPECT_DOUBLE_EQ(effect().pieces[1].ppq, -0.25 + 25.0 / 24000.0);
    EXPECT_EQ(effect().time.barStartPosition, -4.0);
    EXPECT_EQ(effect().time.samplesToNextBeat, 48000 + 12000 - 26) << "at the rate that was set up";
    EXPECT_TRUE(effect().time.playing && effect().time.cycleActive && effect().time.recording &&
                effect().time.transportChanged && effect().time.automationReading);
    EXPECT_EQ(effect().host()->CB_getHostTempo(), 60.0f);
    music = {};
    EXPECT_EQ(process(100), kResultOk) << "a context of nothing but zeros";
}

TEST_F(Orbel_VST3Test, TakesACallWithoutBusesOrChannels)
{
    make();
    for (const auto& [inputs, outputs] : {std::pair(-1, 2), {2, -1}, {-1, -1}})
    {
        EXPECT_EQ(process(64, {{1, {{40, 1.0 + 0.25 * inputs}}}}, inputs, outputs), kResultOk);
        EXPECT_EQ(adapter->getParamNormalized(1), std::min(1.0, 1.0 + 0.25 * inputs));
        EXPECT_TRUE(effect().pieces.empty());
    }
    process(8, {}, 0, 2);
    EXPECT_EQ(left[7], 0.0f) << "a bus without channels is silent, whatever was before";
    EXPECT_EQ(host.silenceFlags, 0u);
    EXPECT_EQ(process(8, {}, 2, 0), kResultOk);
}

TEST_F(Orbel_VST3Test, RefusesSetUpsThatItCannotPlay)
{
    make();
    effect().takeLog();
    const ProcessSetup refused[] = {{kRealtime, kSample64, 64, 44100.0},
                                    {kRealtime, kSample32, 1 << 30, 44100.0},
                                    {kRealtime, kSample32, 64, 0.0},
                                    {kRealtime, kSample32, 64, NAN}};
    for (ProcessSetup setup : refused)
        EXPECT_EQ(adapter->setupProcessing(setup), kResultFalse);
    EXPECT_EQ(effect().takeLog(), "");
    ProcessSetup same{kOffline, kSample32, 500, 48000.0}, other{kOffline, kSample32, 64, 1234.0};
    EXPECT_EQ(adapter->setupProcessing(same), kResultOk);
    EXPECT_EQ(effect().takeLog(), "");
    EXPECT_EQ(adapter->setupProcessing(other), kResultOk);
    EXPECT_EQ(effect().takeLog(), "rate 1234;size 64;");
    adapter->setActive(true);
    adapter->setActive(false);
    EXPECT_EQ(effect().takeLog(), "resume;reset;suspend;");
}

TEST_F(Orbel_VST3Test, ShowsOneBypassAndTheProgramBesideTheParameters)
{
    make();
    ASSERT_EQ(adapter->getParameterCount(), 4);
    ParameterInfo info;
    adapter->getParameterInfo(1, info);
    EXPECT_EQ(info.flags, ParameterInfo::kCanAutomate | ParameterInfo::kIsBypass);
    EXPECT_EQ(info.stepCount, 1);
    adapter->getParameterInfo(2, info);
    EXPECT_EQ(info.flags, ParameterInfo::kCanAutomate) << "the second bypass is a parameter like any";
    adapter->getParameterInfo(3, info);
    EXPECT_EQ(info.id, Orbel_VST3::kProgramList);
    EXPECT_NE(adapter->getParameterInfo(4, info), kResultOk);
    String128 text;
    EXPECT_EQ(adapter->getProgramName(Orbel_VST3::kProgramList, 3, text), kResultOk);
    EXPECT_EQ(textOf(text), "Gr\xC3\xBC\xC3\x9F 3");
    EXPECT_NE(adapter->getProgramName(Orbel_VST3::kProgramList, 4, text), kResultOk);

    Handler handler;
    adapter->setComponentHandler(&handler);
    effect().takeLog();
    for (const ParamID id : {0u, 1u, 99u})
        EXPECT_EQ(adapter->setParamNormalized(id, 0.75), kResultOk);
    EXPECT_EQ(effect().takeLog() + handler.log, "") << "only the program is the controller's";
    EXPECT_EQ(level(), 0.0f);
    adapter->setParamNormalized(Orbel_VST3::kProgramList, 0.75);
    EXPECT_EQ(effect().takeLog() + handler.log, "program 3;restart 4;");
    EXPECT_EQ(adapter->getParamNormalized(Orbel_VST3::kProgramList), 0.75);
    adapter->setComponentHandler(nullptr);
}

TEST_F(Orbel_VST3Test, OwnsABypassWhereTheEffectHasNone)
{
    RecordingEffect::plan.ids = {"LEVEL"};
    make();
    ParameterInfo info;
    adapter->getParameterInfo(1, info);
    EXPECT_EQ(info.id, Orbel_VST3::kOwnBypass);
    EXPECT_EQ(info.flags, ParameterInfo::kCanAutomate | ParameterInfo::kIsBypass);
    effect().takeLog();
    process(8, {{Orbel_VST3::kOwnBypass, {{0, 1.0}}}});
    EXPECT_EQ(effect().takeLog(), "suspend;");
    process(8, {{Orbel_VST3::kOwnBypass, {{0, 0.0}}}});
    EXPECT_EQ(effect().takeLog(), "resume;reset;");
}

TEST_F(Orbel_VST3Test, TurnsTextIntoTheParameter)
{
    make();
    String128 text;
    double position = -1.0;
    copyText("-7.5 dB", text);
    EXPECT_EQ(adapter->getParamValueByString(0, text, position), kResultTrue);
    EXPECT_EQ(level(), -7.5f) << "it takes the value at once";
    EXPECT_EQ(float(position), adapter->getParamNormalized(0));
    for (const char* word : {"", "nan"})
    {
        copyText(word, text);
        EXPECT_NE(adapter->getParamValueByString(0, text, position), kResultTrue) << word;
    }
    EXPECT_EQ(level(), -7.5f);
}

TEST_F(Orbel_VST3Test, PassesTheHostsValueOverWhileTheUserDrags)
{
    make();
    Handler handler;
    adapter->setComponentHandler(&handler);
    OrbelCallback& asked = *effect().host();
    EXPECT_TRUE(asked.CB_beginEdit(0));
    process(8, {{0, {{0, 1.0}}}});
    EXPECT_EQ(level(), 0.0f);
    asked.CB_performEdit(0, 0.5f);
    EXPECT_TRUE(asked.CB_endEdit(0));
    process(8, {{0, {{0, 1.0}}}});
    EXPECT_EQ(level(), 10.0f);
    for (const int index : {-1, 3, 1000}) // 3 is where the program stands, under another id
    {
        EXPECT_FALSE(asked.CB_beginEdit(index) || asked.CB_endEdit(index));
        asked.CB_performEdit(index, 0.5f);
    }
    EXPECT_TRUE(asked.CB_updateHostDisplay() && asked.CB_ioChanged() && asked.CB_setOutputLatency(77));
    asked.CB_parameterInfoChanged("");
    EXPECT_EQ(handler.log, "begin 0;perform 0 50;end 0;unit 0;list -1;restart 26;restart 20;");
    EXPECT_EQ(adapter->getLatencySamples(), 77u);
    adapter->setComponentHandler(nullptr);
    EXPECT_FALSE(asked.CB_beginEdit(0) || asked.CB_updateHostDisplay() || asked.CB_ioChanged());
}

namespace
{
// Takes and gives at most so many bytes at a time, then fails.
struct TornStream : MemoryStream
{
    explicit TornStream(int allowed) : left(allowed) {}
    tresult PLUGIN_API write(void* bytes, int32 count, int32* done) override
    {
        const int taken = std::min<int>(count, left);
        left -= taken;
        return MemoryStream::write(bytes, taken, done);
    }
    int left;
};
}

TEST_F(Orbel_VST3Test, KeepsTheStateInAStream)
{
    make();
    effect().setProgram(2);
    MemoryStream stream;
    EXPECT_EQ(adapter->getState(&stream), kResultOk);
    EXPECT_EQ(std::string(stream.getData(), size_t(stream.getSize())),
              std::string("\5\0\0\0\2\0\0\0state", 13));
    effect().takeLog();
    stream.seek(0, IBStream::kIBSeekSet, nullptr);
    EXPECT_EQ(adapter->setComponentState(&stream), kResultOk);
    EXPECT_EQ(effect().takeLog(), "program 2;chunk state;");

    const std::string torn[] = {std::string("\5\0\0\0\7\0\0\0stat", 12), std::string("\0\0\0\0\7\0\0\0", 8),
                                std::string("\xFF\xFF\xFF\xFF\7\0\0\0x", 9),
                                std::string("\xFF\xFF\xFF\x7F\7\0\0\0x", 9)};
    for (std::string bytes : torn)
    {
        MemoryStream each(bytes.data(), TSize(bytes.size()));
        EXPECT_EQ(adapter->setState(&each), kResultOk);
        EXPECT_EQ(effect().takeLog(), "program 7;");
    }
    MemoryStream cut(stream.getData(), 7);
    EXPECT_EQ(adapter->setState(&cut), kResultFalse);
    EXPECT_EQ(effect().takeLog(), "");
    for (const int room : {0, 5, 12})
    {
        TornStream each(room);
        EXPECT_EQ(adapter->getState(&each), kResultFalse) << room;
    }
}

TEST_F(Orbel_VST3Test, BeginsAgainAfterTerminate)
{
    make();
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_NE(adapter->initialize(nullptr), kResultOk) << "twice in a row";
        EXPECT_EQ(adapter->terminate(), kResultOk);
        EXPECT_EQ(RecordingEffect::latest, nullptr);
        EXPECT_EQ(adapter->getParameterCount() + adapter->getBusCount(kAudio, kInput), 0);
        MemoryStream stream;
        ProcessData data;
        EXPECT_NE(adapter->process(data), kResultOk);
        EXPECT_NE(adapter->setActive(true), kResultOk);
        EXPECT_NE(adapter->getState(&stream), kResultOk);
        EXPECT_EQ(adapter->initialize(nullptr), kResultOk);
        EXPECT_EQ(effect().takeLog(), "rate 48000;size 500;") << "as it was set up before";
        EXPECT_EQ(adapter->getParameterCount(), 4);
    }
}

TEST_F(Orbel_VST3Test, TurnsNotesAndControllersIntoMidi)
{
    RecordingEffect::plan.type = OrbelFX_Description::instrument;
    make();
    EXPECT_EQ(adapter->getBusCount(kEvent, kInput), 1);
    ASSERT_EQ(adapter->getParameterCount(), 4 + 16 * 130);
    ParamID wheel = 0, bend = 0, last = 0;
    EXPECT_EQ(adapter->getMidiControllerAssignment(0, 2, 1, wheel), kResultOk);
    EXPECT_EQ(adapter->getMidiControllerAssignment(0, 3, kPitchBend, bend), kResultOk);
    EXPECT_EQ(adapter->getMidiControllerAssignment(0, 15, 129, last), kResultOk);
    EXPECT_EQ(last, 0x43303030u + 2079u);
    adapter->getMidiControllerAssignment(0, 16, 0, last);
    EXPECT_EQ(last, 0x43303030u + 2079u) << "there is no such channel";
    EXPECT_NE(adapter->getMidiControllerAssignment(0, 0, 130, last), kResultOk);

    const uint8 bytes[] = {0xC5, 9, 8, 7, 6};
    Event on{}, data{};
    on.type = Event::kNoteOnEvent;
    on.sampleOffset = 11;
    on.noteOn.channel = 4;
    on.noteOn.pitch = 60;
    on.noteOn.velocity = 0.5f;
    data.type = Event::kDataEvent;
    data.data.bytes = bytes;
    data.data.size = sizeof bytes;
    host.events.list = {on, data};
    process(64, {{wheel, {{7, 0.5}}}, {bend, {{9, 0.75}}}});
    std::vector<std::vector<int>> got; // offset, bytes, type, channel
    for (const auto& each : effect().midi)
        got.push_back({int(each.sampleOffset), each.raw[0], each.raw[1], each.raw[2], int(each.eventType),
                       int(each.channel)});
    EXPECT_THAT(got, ElementsAre(ElementsAre(7, 178, 1, 63, 0, 2), ElementsAre(9, 227, 127, 95, 0, 3),
                                 ElementsAre(11, 148, 60, 63, 144, 4), ElementsAre(0, 197, 9, 8, 192, 0)));

    EXPECT_EQ(process(501, {{wheel, {{7, 0.25}}}}), kResultFalse);
    EXPECT_TRUE(effect().midi.empty()) << "of a refused block nothing is heard,";
    process(64, {{wheel, {{7, 0.5}}}}, 2, -1);
    EXPECT_EQ(effect().midi.size(), 1u) << "of a call without audio the controllers";
    host.events.list.assign(1500, on); // more than there is room for
    for (int i = 0; i < 1500; ++i)
        host.events.list[size_t(i)].sampleOffset = i;
    process(64);
    ASSERT_EQ(effect().midi.size(), 1500u);
    EXPECT_TRUE(std::is_sorted(effect().midi.begin(), effect().midi.end(),
                               [](const auto& a, const auto& b) { return a.sampleOffset < b.sampleOffset; }));
    host.events.list.clear();
    process(64);
    EXPECT_TRUE(effect().midi.empty());
}

TEST_F(Orbel_VST3Test, GivesNoMidiToAnEffectThatTakesNone)
{
    make();
    Event on{};
    on.type = Event::kNoteOnEvent;
    host.events.list = {on};
    process(64);
    EXPECT_TRUE(effect().midi.empty());
}

TEST_F(Orbel_VST3Test, ShowsTheEditorOfAnEffectThatHasOne)
{
    make();
    EXPECT_EQ(adapter->createView(ViewType::kEditor), nullptr);
    RecordingEffect::plan.hasEditor = true;
    make();
    const auto view = owned(adapter->createView(ViewType::kEditor));
    auto& editor = dynamic_cast<RecordingEditor&>(*effect().getEditor());
    ViewRect size;
    view->getSize(&size);
    EXPECT_EQ(size.right, 600);
    EXPECT_EQ(size.bottom, 350);
    EXPECT_EQ(view->isPlatformTypeSupported(kPlatformTypeHWND), kResultFalse);
    EXPECT_EQ(view->onKeyDown('a', 0, 0), kResultFalse) << "not open yet";
    EXPECT_EQ(view->attached(nullptr, kPlatformTypeX11EmbedWindowID), kResultFalse);
    EXPECT_EQ(view->attached(this, kPlatformTypeX11EmbedWindowID), kResultTrue);
    EXPECT_EQ(view->onKeyDown('a', 0, 1 | 4), kResultTrue);
    EXPECT_EQ(view->onKeyUp('x', 0, 2 | 8), kResultFalse);
    view->onKeyDown(0, 128 + 'A' - 48, 0);
    EXPECT_EQ(view->removed(), kResultTrue);
    EXPECT_EQ(editor.log,
              "open X11EmbedWindowID;open X11EmbedWindowID;down 97 0 9;up 120 0 6;down 65 145 0;close;");
    const auto other = owned(adapter->createView(ViewType::kEditor));
    EXPECT_EQ(other->attached(this, kPlatformTypeX11EmbedWindowID), kResultTrue);
    EXPECT_EQ(view->attached(this, kPlatformTypeX11EmbedWindowID), kResultFalse) << "it is in the other view";
    EXPECT_EQ(view->removed(), kResultTrue);
    EXPECT_EQ(other->onWheel(1.0f), kResultTrue) << "and stays there";
    adapter->terminate();
    EXPECT_EQ(other->onWheel(1.0f), kResultFalse);
    EXPECT_EQ(view->attached(this, kPlatformTypeX11EmbedWindowID), kResultFalse);
}

TEST_F(Orbel_VST3Test, RunsTheEditorInTheLoopOfTheHostThatShowsIt)
{
    RecordingEffect::plan.hasEditor = true;
    make();
    VST3HostFrame hosts[2];
    auto& editor = dynamic_cast<RecordingEditor&>(*effect().getEditor());
    const auto view = owned(adapter->createView(ViewType::kEditor));
    Tovra::RepeatingTimer timer;
    Tovra::DescriptorWatch watch;
    std::string calls;
    editor.onOpen = [&]
    {
        timer.start(25, [&] { calls += "timer;"; });
        watch.start(7,
                    [&] { calls += "input;", timer.start(40, [&] { view->removed(), calls += "gone;"; }); });
    };
    view->setFrame(&hosts[0]);
    EXPECT_EQ(view->attached(this, kPlatformTypeX11EmbedWindowID), kResultTrue);
    EXPECT_EQ(std::exchange(hosts[0].log, ""), "timer 25;descriptor 7;");
    hosts[0].timers[0].handler->onTimer();
    const IPtr<Linux::ITimerHandler> late(hosts[0].timers[0].handler);
    view->removed();
    late->onTimer(); // by a host that had it in hand already
    EXPECT_EQ(std::exchange(calls, ""), "timer;");
    EXPECT_TRUE(hosts[0].isIdle());

    // The other window gets its frame too late, and goes while one of its timers is called.
    view->setFrame(nullptr);
    timer.stop();
    watch.stop();
    EXPECT_EQ(view->attached(this, kPlatformTypeX11EmbedWindowID), kResultTrue);
    view->setFrame(&hosts[1]);
    EXPECT_EQ(hosts[1].log, "timer 25;descriptor 7;");
    hosts[1].inputs[0].handler->onFDIsSet(7);
    const IPtr<Linux::ITimerHandler> last(hosts[1].timers[0].handler);
    last->onTimer();
    EXPECT_EQ(calls, "input;gone;");
    EXPECT_TRUE(hosts[1].isIdle());
    EXPECT_EQ(Tovra::RunLoop::current(), nullptr);
    EXPECT_EQ(hosts[0].log, "");
}

TEST_F(Orbel_VST3Test, HasOneSizeAtEachScale)
{
    RecordingEffect::plan.hasEditor = true;
    make();
    VST3HostFrame frame;
    const auto view = owned(adapter->createView(ViewType::kEditor));
    const FUnknownPtr<IPlugViewContentScaleSupport> scaling(view);
    ASSERT_TRUE(scaling);
    const auto size = [&view]
    {
        ViewRect rect;
        view->getSize(&rect);
        return std::to_string(rect.getWidth()) + "x" + std::to_string(rect.getHeight());
    };
    view->setFrame(&frame);
    EXPECT_EQ(size(), "600x350");
    for (const float factor : {0.0f, -1.0f, std::numeric_limits<float>::infinity(), NAN})
        EXPECT_EQ(scaling->setContentScaleFactor(factor), kResultFalse);
    EXPECT_EQ(scaling->setContentScaleFactor(2.0f), kResultTrue);
    EXPECT_EQ(frame.log, "") << "not attached";
    view->attached(this, kPlatformTypeX11EmbedWindowID);
    EXPECT_EQ(std::exchange(frame.log, ""), "1201x700;") << "the host knows another size";
    EXPECT_EQ(scaling->setContentScaleFactor(1.0f), kResultTrue);
    EXPECT_EQ(frame.log, "600x350;");
    EXPECT_EQ(view->canResize(), kResultFalse);
    ViewRect wish(10, 10, 900, 20);
    EXPECT_EQ(view->onSize(&wish), kResultTrue);
    EXPECT_EQ(view->checkSizeConstraint(&wish), kResultTrue);
    EXPECT_EQ(wish.right, 610);
    EXPECT_EQ(wish.bottom, 360);
    EXPECT_EQ(size(), "600x350");
    EXPECT_EQ(view->getSize(nullptr), kInvalidArgument);
    EXPECT_EQ(view->onSize(nullptr), kInvalidArgument);
}
