// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/OrbelFactory.h"
#include "effect/instance/CQDT_DKS_Single.h"
#include "effect/instance/Player.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

TEST(CQDT_DKS_Single, IsCompleteWhenItIsMade)
{
    const std::unique_ptr<Orbel::OrbelOS> effect(createOrbelInstance(nullptr, 0));
    EXPECT_EQ(effect->getParameterCount(), 10);
    EXPECT_EQ(effect->getParameterPropertyByID(13)->getCurrentValue(),
              10.0f); // its row says 1, below the minimum
    const Orbel::OrbelFX_Description& description = (*getOrbelPluginListPTR())[0];
    EXPECT_EQ(getOrbelPluginListPTR()->getCount(), 1);
    EXPECT_EQ(description.idAsWord(), 0x5154525Aul); // "ZRTQ" from the lowest byte up
}

TEST(CQDT_DKS_Single, NamesLoseTheirNumberAndHostsGetTwentyEightCharacters)
{
    CQDT_DKS_Single effect(nullptr);
    struct Case
    {
        const char *given, *shown;
    };
    const Case table[] = {{"07-Pump", "Pump"},
                          {"100% %n%s", "100% %n%s"},
                          {"a name of more than twenty-eight", "a name of more than twenty-e"}};
    for (const Case& each : table)
    {
        char name[256];
        effect.setProgramName(each.given);
        effect.setProgramName(nullptr);
        effect.getProgramName(name);
        EXPECT_STREQ(name, each.shown);
    }
    effect.setProgramName(std::string(5000, 'x').c_str());
}

TEST(CQDT_DKS_Single, TimesPrintAtTheTempoAndTheTimeBase)
{
    Player player;
    player.play(64);
    char text[256];
    Orbel::ParameterProperty* hold = player.effect.getParameterProperty("HOLDTIME");
    const auto rendered = [&] { return Orbel::renderPropertyText(hold, text, true, true, true), text; };
    EXPECT_STREQ(rendered(), "21.33 ms"); // 20 x 128 / 120
    player.effect.setTimeAdjust(4.0f);
    EXPECT_STREQ(rendered(), "85.33 ms");
    player.set("BPMSCALE", 0);
    EXPECT_STREQ(rendered(), "20.00 ms");
    EXPECT_EQ(player.get("TEMPO"), 120.0f);
}

TEST(CQDT_DKS_Single, LinkedTimesGiveWayAndUnlinkedOnesStay)
{
    struct Case
    {
        const char* id;
        float value, attack, hold, release;
    };
    const Case table[] = {
        {"ATTACKTIME", 60, 60, 1, 431},    {"HOLDTIME", 41, 60, 41, 391},
        {"RELEASTIME", 100, 60, 41, 100}, // changes nothing else
        {"HOLDTIME", 41, 60, 41, 100},    // written again: no change
        {"STRENGTH", 0.5f, 60, 41, 100},   {"LINKTIMES", 0, 60, 41, 100},
        {"ATTACKTIME", 100, 100, 41, 100}, {"LINKTIMES", 1, 100, 41, 100},
        {"ATTACKTIME", 90, 90, 51, 100}, // measured from what it was while nothing was linked
    };
    Player player;
    for (const Case& each : table)
    {
        SCOPED_TRACE(testing::Message() << each.id << " = " << each.value);
        player.set(each.id, each.value);
        EXPECT_FLOAT_EQ(player.get("ATTACKTIME"), each.attack);
        EXPECT_FLOAT_EQ(player.get("HOLDTIME"), each.hold);
        EXPECT_FLOAT_EQ(player.get("RELEASTIME"), each.release);
    }
}

TEST(CQDT_DKS_Single, DelaysByTheClickFilterWhateverTheBlockAndTheBypass)
{
    struct Case
    {
        float rate, filter;
        int delay;
    };
    const Case table[] = {{44100, 0.25f, 130}, {44100, 0, 5}, {192000, 1, 2198}, {8000, 0, 0}};
    for (const Case& each : table)
        for (int block : {1, 64, 500, 4096})
        {
            SCOPED_TRACE(testing::Message()
                         << each.rate << " Hz, filter " << each.filter << ", block " << block);
            Player player(each.rate, 4096);
            player.set("CLICKFILTER", each.filter);
            player.set("STRENGTH", 0);
            player.play(block == 1 ? 600 : 3000, block);
            player.set("BYPASS", 1);
            player.play(block == 1 ? 600 : 3000, block);
            player.set("BYPASS", 0);
            player.play(3000, block);
            for (size_t i = 0; i < player.left.size(); ++i)
            {
                const long source = long(i) - each.delay;
                const float expected = source < 0 ? 0.0f : Player::input(source);
                ASSERT_EQ(player.left[i], expected) << i;
                ASSERT_EQ(player.right[i], -expected) << i;
                ASSERT_EQ(player.gain[i], -1.0f) << i;
            }
        }
}

TEST(CQDT_DKS_Single, ALongerDelayBeginsWithSilenceAndAShorterOneAtOnce)
{
    Player player;
    player.set("STRENGTH", 0);
    player.play(1000, 100);
    player.set("CLICKFILTER", 0.0f); // 5 samples of what lies at the line's beginning: the oldest
    player.play(10);
    EXPECT_EQ(player.left[1000], Player::input(870));
    EXPECT_EQ(player.left[1004], Player::input(874));
    EXPECT_EQ(player.left[1005], Player::input(1000));
    player.set("CLICKFILTER", 1.0f);
    player.play(600);
    EXPECT_EQ(player.left[1010 + 504], 0.0f);
    EXPECT_EQ(player.left[1010 + 505], Player::input(1010));
}

// Where an envelope starts, in samples after the beat: read from the gain record.
TEST(CQDT_DKS_Single, TriggersFallOnTheNoteValueWhateverTheBlock)
{
    struct Case
    {
        double tempo, ppq;
        float base, shift;
        long first, interval;
    };
    const Case table[] = {
        {120, 0, 1, 0, 1, 22050}, // at or before the song's beginning: one sample later
        {120, 0.9, 0.25f, 0, 2205, 5512},
        {120, 0.75, 1, 0.5f, 1, 22050}, // a quarter of a beat earlier
    };
    for (const Case& each : table)
        for (int block : {64, 256, 2000})
        {
            SCOPED_TRACE(testing::Message()
                         << each.tempo << " BPM at " << each.ppq << ", blocks of " << block);
            Player player;
            player.tempo = each.tempo;
            player.effect.setTimeAdjust(each.base);
            player.set("TRIGGERSHIFT", each.shift);
            player.set("LINKTIMES", 0);
            player.set("HOLDTIME", 1);
            player.set("RELEASTIME", 100);
            player.ppq = each.ppq;
            player.play(3 * each.interval, block);

            // The first pre-fade leads to where no cycle has begun yet, so the gain stays: its envelope
            // shows.
            const auto found = player.triggers();
            ASSERT_GE(found.size(), 2u);
            EXPECT_EQ(found[0], each.first + 130);
            EXPECT_NEAR(double(found[1]), double(each.first + each.interval + 1), 1.0);
        }
}

TEST(CQDT_DKS_Single, LargeBlocksLoseNoTrigger)
{
    struct Case
    {
        float base;
        int block;
        long pieces; // what the effect desires at 44.1 kHz and 120 BPM
    };
    const Case table[] = {{0.25f, 4096, 1378},
                          {0.25f, 1378, -1},
                          {0.25f, 1379, 1378},
                          {1.0f / 6.0f, 8192, 918},
                          {1.0f, 4096, -1}};
    for (const Case& each : table)
    {
        SCOPED_TRACE(testing::Message() << "base " << each.base << ", blocks of " << each.block);
        Player player;
        player.effect.setTimeAdjust(each.base);
        player.set("HOLDTIME", 1);
        player.set("RELEASTIME", 60);
        player.play(44100, each.block);
        const double interval = 22050.0 * double(each.base);
        const auto found = player.triggers();
        EXPECT_NEAR(double(found.size()), 44100.0 / interval, 1.5);
        for (size_t i = 2; i < found.size(); ++i)
            EXPECT_NEAR(double(found[i] - found[i - 1]), interval, 2.0) << i;

        Orbel::CHostTimeInfo time;
        time.tempo = 120.0f;
        player.effect.prepareSyncParameterSet(time, each.block);
        EXPECT_EQ(player.effect.getDesiredProcessBlockSize(), each.pieces);
    }
}

TEST(CQDT_DKS_Single, ANewSampleRateRenewsTheLookAheadAndTheTriggerShift)
{
    Player player;
    player.set("TRIGGERSHIFT", -0.5f); // a quarter of a beat later
    player.playing = false;
    player.play(64); // takes the tempo, which stays
    player.effect.setSampleRate(88200.0f);
    player.rate = 88200.0f;
    player.effect.reset();
    player.playing = true;
    player.ppq = 0.9;
    player.play(30000, 256);
    const auto found = player.triggers();
    ASSERT_FALSE(found.empty());
    EXPECT_NEAR(double(found[0]), 64 + 4410 + 11025 + 260, 1.0); // the look-ahead: 130 samples at 44.1 kHz
}

TEST(CQDT_DKS_Single, TheTimeOffsetReachesTheDucker)
{
    Player player;
    player.set("TIME_OFFSET", 0.5f); // 235 of 470 ms: in the release, which is half over
    player.ppq = 0.9;
    player.play(2205 + 130 + 4, 64);
    EXPECT_NEAR(player.gain.back(), 2.0 * (1.0 - 215.0 / 450.0) - 1.0, 1e-2);
}

TEST(CQDT_DKS_Single, StoppedNothingArmsAndARunningEnvelopeRunsOut)
{
    Player player;
    player.ppq = 1.0;
    player.play(3000, 128);
    EXPECT_EQ(player.triggers().size(), 1u);
    player.playing = false;
    player.play(100000, 512);
    EXPECT_EQ(player.triggers().size(), 1u);
    EXPECT_EQ(player.gain.back(), -1.0f);
}

TEST(CQDT_DKS_Single, BypassShowsAtOnceAndHoldsTheCountdowns)
{
    Player player;
    player.ppq = 1.0;
    player.play(500);
    EXPECT_GT(player.gain.back(), 0.5f);
    player.set("BYPASS", 1);
    player.playing = false;
    player.play(700);
    for (size_t i = 500; i < 1200; ++i)
        ASSERT_EQ(player.gain[i], -1.0f);
    player.set("BYPASS", 0);
    player.play(1);
    EXPECT_GT(player.gain.back(), 0.5f); // the envelope stood still
}

TEST(CQDT_DKS_Single, OddBlocksAndTransportsDoNoHarm)
{
    Player player(44100, 64);
    player.play(1000); // above the announced size
    player.play(0);
    const double nan = std::nan("");
    for (double bad : {nan, double(INFINITY), 0.0, -120.0})
    {
        player.tempo = bad;
        player.ppq = 2.0;
        player.play(64);
        EXPECT_EQ(player.get("TEMPO"), 120.0f);
        player.tempo = 120;
        player.ppq = bad == 0.0 ? 1e300 : bad;
        player.play(64);
    }
    player.tempo = 1e-6; // an interval beyond 32 bits
    player.ppq = 1.0;
    player.play(64);
    player.effect.setSampleRate(float(nan));
    player.effect.setBlockSize(0);
    player.effect.setTimeAdjust(float(nan));
    EXPECT_EQ(player.effect.getSampleRate(), 44100.0f);
    for (float sample : player.left)
        ASSERT_TRUE(std::isfinite(sample));

    Orbel::AudioBusInformation nothing;
    nothing.numSamples = 32;
    player.effect.processAudio(nothing);
    CQDT_DKS_Single(nullptr).processAudio(nothing); // no block size announced
}

// The editor's place: a window that writes down what it is told.
struct Window : IEffectEditor
{
    inline static std::string told;
    inline static int alive = 0;

    Orbel::CPropertyManager* parameters = nullptr;

    Window() { ++alive; }
    ~Window() override // still reads the parameters, as controls do
    {
        --alive;
        told += parameters->getProperty("STRENGTH")->getCurrentValue() == 1.0f ? "gone" : "";
    }
    void setPropertyManager(Orbel::CPropertyManager* manager) override
    {
        parameters = manager;
        told += "manager ";
    }
    void setSampleRate(float) override { told += "rate "; }
    void setTempo(float bpm) override { told += "tempo" + std::to_string(int(bpm)) + " "; }
    void setTimeAdjust(float) override { told += "base "; }
    void updateScopes(bool, int) override { told += "scopes "; }
    void updateData(long samples) override { told += "data" + std::to_string(samples) + " "; }
    void getEditorSize(Tovra::CRect&) override { told += "size "; }
    bool open(void*, const char*) override { return told += "open ", true; }
    void close() override { told += "close "; }
};

struct Cubase : Orbel::OrbelCallback
{
    int version = 6999, inputs = 0;
    bool CB_getHostProductString(char* text) override { return std::strcpy(text, "Cubase"); }
    int CB_getHostVendorVersion() override { return version; }
    bool CB_setNumStereoInputs(int channels) override
    {
        inputs = channels;
        return true;
    }
    float CB_getHostTempo() override { return 174.0f; }
};

TEST(CQDT_DKS_Single, TellsItsWindowAndAsksItsHost)
{
    setEditorFactory([](CQDT_DKS_Single&) -> std::unique_ptr<IEffectEditor>
                     { return std::make_unique<Window>(); });
    {
        Cubase host;
        Player player(48000, 64, &host);
        setEditorFactory(nullptr);
        EXPECT_EQ(Window::told, "manager base tempo174 rate ");
        EXPECT_EQ(player.get("TEMPO"), 174.0f);
        EXPECT_EQ(host.inputs, 2); // channels: an old version of that host gets no second bus
        Window::told.clear();
        player.play(64);
        player.set("BYPASS", 1);
        player.play(32);
        player.effect.open_editor(nullptr);
        player.effect.close_editor();
        EXPECT_EQ(Window::told, "tempo120 scopes scopes data32 open close ");
        EXPECT_EQ(Window::alive, 1);
        Window::told.clear();
    }
    EXPECT_EQ(Window::told, "close gone") << "ahead of the parameters";
    EXPECT_EQ(Window::alive, 0);

    Cubase newer;
    newer.version = 7000;
    CQDT_DKS_Single effect(&newer);
    EXPECT_EQ(newer.inputs, 4);
}
