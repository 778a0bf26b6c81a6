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

// Linked times: another time gives way, so that the shape keeps its place in the beat.
TEST(CQDT_DKS_Single, LinkedTimesGiveWayToAttackAndHold)
{
    struct Case
    {
        const char* id;
        float value, attack, hold, release;
    };
    const Case table[] = {
        {"ATTACKTIME", 10, 10, 10, 450},  // the hold takes it over
        {"ATTACKTIME", 60, 60, 1, 441},   // to its minimum; the release gives what the hold gave: 9
        {"ATTACKTIME", 30, 30, 31, 441},  // back again
        {"HOLDTIME", 41, 30, 41, 431},    // the release alone
        {"RELEASTIME", 100, 30, 41, 100}, // changes nothing else
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
    player.set("LINKTIMES", 0);
    player.set("ATTACKTIME", 100);
    EXPECT_FLOAT_EQ(player.get("HOLDTIME"), 41);
    EXPECT_FLOAT_EQ(player.get("RELEASTIME"), 100);
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

// Where a trigger falls, in samples: read from the gain record, for one block size and many.
TEST(CQDT_DKS_Single, TriggersFallOnTheBeat)
{
    struct Case
    {
        double tempo, ppq;
        float base, shift;
        long first, interval;
    };
    const Case table[] = {
        {120, 0.75, 1, 0, 5513, 22050},   // position 16537.5: its remainder is cut
        {120, 0, 1, 0, 1, 22050},         // at or before the song's beginning: one sample later
        {120, 1, 1, 0, 0, 22050},         // a block on the beat fires with its first sample
        {120, 0.9, 0.25f, 0, 2205, 5512}, // sixteenths: 4 x 5512.5 - 19845, cut
        {150, 7.0 / 6.0, 1.0f / 3.0f, 0, 2941,
         5880},                         // triplets: a third is a little more in single precision
        {120, 0.75, 1, 0.5f, 1, 22050}, // a quarter of a beat earlier
        {120, 0.9, 1, -0.1f, 2205 + 1102, 22050},
    };
    for (const Case& each : table)
    {
        SCOPED_TRACE(testing::Message() << each.tempo << " bpm at " << each.ppq << ", base " << each.base);
        Player player;
        player.tempo = each.tempo;
        player.effect.setTimeAdjust(each.base);
        player.set("TRIGGERSHIFT", each.shift);
        player.set("LINKTIMES", 0);
        player.set("HOLDTIME", 1);
        player.set("RELEASTIME", 100);
        player.ppq = each.ppq - 60.0 / (60.0 / each.tempo * 44100.0);
        player.playing = false;
        player.play(60);
        player.playing = true;
        player.ppq = each.ppq;
        player.play(3 * each.interval, 256);

        // The first pre-fade leads to where no cycle has begun yet, so the gain stays: its envelope shows.
        const auto found = player.triggers();
        ASSERT_GE(found.size(), 2u);
        EXPECT_EQ(found[0], 60 + each.first + 130);
        EXPECT_NEAR(double(found[1]), double(60 + each.first + each.interval + 1), 1.0);
    }
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

    Window() { ++alive; }
    ~Window() override { --alive; }
    void setPropertyManager(Orbel::CPropertyManager* manager) override { told += manager ? "manager " : ""; }
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
    }
    EXPECT_EQ(Window::alive, 0);

    Cubase newer;
    newer.version = 7000;
    CQDT_DKS_Single effect(&newer);
    EXPECT_EQ(newer.inputs, 4);
}
