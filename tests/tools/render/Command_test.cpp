// SPDX-License-Identifier: GPL-3.0-or-later
// The lodex command and its renders, as processes.

#include "tools/common/LodexProcess.h"
#include "tools/render/AudioFile.h"

#include <cmath>
#include <cstring>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sndfile.h>
#include <sys/stat.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
constexpr int rate = 44100;
constexpr int frames = 3 * rate;
constexpr int delay = 130; // of the effect at that rate, with the click filter as it starts

class Command : public LodexProcess
{
protected:
    void SetUp() override { putNoise("in.wav", rate, frames); }

    struct Sound
    {
        int rate, channels, format;
        std::vector<float> samples; // interleaved
        float at(int frame, int channel = 0) const
        {
            return samples[size_t(frame) * size_t(channels) + size_t(channel)];
        }
        int length() const { return int(samples.size()) / channels; }
    };
    Sound sound(const std::string& name)
    {
        SF_INFO info{};
        SNDFILE* const file = sf_open((folder / name).c_str(), SFM_READ, &info);
        if (!file)
            throw std::runtime_error(name + " is no sound");
        Sound result{info.samplerate, info.channels, info.format, {}};
        result.samples.resize(size_t(info.frames * info.channels));
        sf_read_float(file, result.samples.data(), sf_count_t(result.samples.size()));
        sf_close(file);
        return result;
    }
};
}

TEST_F(Command, DucksOnEveryBeat)
{
    const Result result = lodex("render in.wav out.wav --gain gain.wav --bpm 120");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "out.wav: 3.00 s at 44100 Hz, 6 ducks, the deepest to silence\n");
    EXPECT_EQ(result.err, "");

    const Sound in = sound("in.wav"), out = sound("out.wav"), gain = sound("gain.wav");
    EXPECT_EQ(out.format, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    EXPECT_EQ(out.rate, rate);
    EXPECT_EQ(out.channels, 2);
    EXPECT_EQ(gain.channels, 1);
    ASSERT_EQ(out.length(), frames);
    ASSERT_EQ(gain.length(), frames);
    for (int i = delay; i < frames; ++i)
    {
        const float record = gain.at(i);
        ASSERT_TRUE(record >= -1.0f && record <= 1.0f) << i;
        for (int channel = 0; channel < 2; ++channel)
            ASSERT_NEAR(out.at(i, channel), in.at(i - delay, channel) * (1.0f - record) / 2.0f, 1e-6) << i;
    }
    constexpr int beat = rate / 2;
    for (int at = beat; at < frames; at += beat)
    {
        EXPECT_LT(gain.at(at - 2), -0.95f) << at;       // open again just ahead of the beat
        EXPECT_EQ(gain.at(at + delay + 2), 1.0f) << at; // closed when the beat's own sound comes out
    }
}

TEST_F(Command, GivesTheSameSamplesForAnyBlocks)
{
    // A rate and tempo at which the position is exact in every block.
    putSound("exact.wav", 2, 32768, std::vector<float>(size_t(6) * 32768, 0.5f));
    const std::string common = "exact.wav --bpm 60 --timebase 1/8 --set ATTACKTIME=20 ";
    ASSERT_EQ(lodex("render " + common + "--gain ref-gain.wav reference.wav").code, 0);
    for (const char* blocks : {"1", "64,37,1", "8192"})
    {
        ASSERT_EQ(lodex("render " + common + "--gain gain.wav out.wav --block " + blocks).code, 0);
        EXPECT_TRUE(same("out.wav", "reference.wav")) << blocks;
        EXPECT_TRUE(same("gain.wav", "ref-gain.wav")) << blocks;
    }
    // A set without a sound cuts the block all the same, and must not lose the beat.
    folder.put("moves.txt", "at 5000 set ENVHOLD 1\nat 15000 set ENVHOLD 0\nat 31000 set ENVHOLD 1\n"
                            "at 31100 set BPMSCALE 0\nat 65500 set ENVHOLD 0\n");
    ASSERT_EQ(lodex("render " + common + "--gain gain.wav out.wav --block 8192 --events moves.txt").code, 0);
    EXPECT_TRUE(same("out.wav", "reference.wav"));
    EXPECT_TRUE(same("gain.wav", "ref-gain.wav"));
}

TEST_F(Command, WritesTheSameBytesEachTimeAndOverItsOwnInput)
{
    ASSERT_EQ(lodex("render in.wav a.wav --plot a.png").code, 0);
    ASSERT_EQ(lodex("render in.wav b.wav --plot b.png --block 512").code, 0);
    EXPECT_TRUE(same("a.wav", "b.wav"));
    EXPECT_TRUE(same("a.png", "b.png")); // IN's name is its title
    EXPECT_EQ(folder.content("a.png").substr(0, 4), "\x89PNG");
    EXPECT_EQ(folder.content("a.wav").find("PEAK"), std::string::npos); // it would hold the time of day
    ASSERT_EQ(lodex("render in.wav in.wav").code, 0);
    EXPECT_TRUE(same("in.wav", "a.wav"));
    EXPECT_THAT(folder.names(), ElementsAre("a.png", "a.wav", "b.png", "b.wav", "in.wav"));
}

TEST_F(Command, FollowsAnEventsFile)
{
    folder.put("moves.txt", "at 30000 set STRENGTH 0 # no ducking from here on\n"
                            "at 60000 set STRENGTH 1\n"
                            "at 88000 play 0\n");
    ASSERT_EQ(lodex("render in.wav out.wav --gain plain.wav --block 4096").code, 0);
    ASSERT_EQ(lodex("render in.wav out.wav --gain gain.wav --block 4096 --events moves.txt").code, 0);
    const Sound gain = sound("gain.wav"), plain = sound("plain.wav");
    constexpr int step = 23; // the ducker takes a new strength within so many samples
    const auto isLikePlain = [](int i) { return i < 30000 || (i >= 60000 + step && i < 88000); };
    const auto isOpen = [](int i)
    {
        return (i >= 30000 + step && i < 60000) || i > 5 * 22050; // the fifth beat starts no duck
    };
    for (int i = 0; i < frames; ++i)
    {
        ASSERT_TRUE(!isLikePlain(i) || gain.at(i) == plain.at(i)) << i;
        ASSERT_TRUE(!isOpen(i) || gain.at(i) == -1.0f) << i;
    }
    EXPECT_NE(plain.at(30000 + step), -1.0f);
    EXPECT_NE(plain.at(5 * 22050 + 1000), -1.0f);
}

TEST_F(Command, AnEventAtTheStartIsTheOptionOfItsName)
{
    const std::pair<const char*, const char*> cases[] = {
        {"tempo 90.5", "--bpm 90.5"}, {"ppq -2.25", "--ppq -2.25"}, {"timebase 1/8T", "--timebase 1/8T"}};
    for (const auto& [event, option] : cases)
    {
        folder.put("moves.txt", std::string("# first\n\n\tat  0   ") + event + " # so\r\n");
        ASSERT_EQ(lodex(std::string("render in.wav option.wav ") + option).code, 0);
        ASSERT_EQ(lodex("render in.wav event.wav --events moves.txt").code, 0);
        EXPECT_TRUE(same("option.wav", "event.wav")) << event;
    }
}

TEST_F(Command, TakesSetsInTheirOrder)
{
    // Linked, a longer attack takes from the hold time; afterwards it does not.
    ASSERT_EQ(lodex("render in.wav a.wav --set ATTACKTIME=15 --link off").code, 0);
    ASSERT_EQ(lodex("render in.wav b.wav --link off --set ATTACKTIME=15").code, 0);
    ASSERT_EQ(lodex("render in.wav c.wav --link off --set ATTACKTIME=15 --set HOLDTIME=5").code, 0);
    EXPECT_FALSE(same("a.wav", "b.wav"));
    EXPECT_TRUE(same("a.wav", "c.wav"));
}

TEST_F(Command, RendersTheSameThroughTheBuiltPlugIn)
{
    folder.put("all.txt", "at 0 set STRENGTH 0.9\nat 5000 tempo 90.5\nat 30011 set RELEASECURVE -2\n"
                          "at 40000 play 0\nat 60000 play 1\nat 60000 ppq -0.3\nat 70000 set BYPASS 1\n");
    const char* const cases[] = {"--bpm 97.3 --timebase 1/8T --block 512,1,64 --set STRENGTH=0.7 --set "
                                 "ATTACKTIME=33.3 --set CLICKFILTER=1",
                                 "--ppq 1e3 --link off --set HOLDTIME=90 --set TRIGGERSHIFT=0.25 --set "
                                 "ATTACKCRUVE=-5 --set TIME_OFFSET=0.1",
                                 "--events all.txt --block 256"};
    for (const std::string options : cases)
    {
        SCOPED_TRACE(options);
        EXPECT_EQ(lodex("render in.wav effect.wav " + options).code, 0);
        const Result result = lodex("render in.wav vst3.wav --engine vst3 " + options);
        EXPECT_EQ(result.err, "");
        EXPECT_TRUE(same("effect.wav", "vst3.wav"));
    }
    EXPECT_THAT(shell("LODEX_VST3=/nowhere %lodex render in.wav out.wav --engine vst3").err,
                StartsWith("lodex: cannot load /nowhere"));
}

TEST_F(Command, TakesMonoAndEmptyAndUnusualFiles)
{
    putSound("mono.wav", 1, 8000, std::vector<float>(8000, 0.5f));
    EXPECT_EQ(lodex("render mono.wav out.wav").code, 0);
    const Sound out = sound("out.wav");
    EXPECT_EQ(out.channels, 2);
    EXPECT_EQ(out.rate, 8000);
    ASSERT_EQ(out.length(), 8000);
    EXPECT_GT(out.at(3999, 0), 0.4f);
    EXPECT_EQ(out.at(3999, 0), out.at(3999, 1));

    putSound("empty.wav", 2, rate, {});
    EXPECT_EQ(lodex("render empty.wav out.wav --gain gain.wav --plot plot.png").code, 0);
    EXPECT_EQ(sound("gain.wav").length(), 0);

    std::vector<float> wild(2000, 0.25f);
    wild[0] = NAN;
    wild[3] = INFINITY;
    putSound("wild.wav", 2, rate, wild);
    EXPECT_EQ(lodex("render wild.wav out.wav --set STRENGTH=0").code, 0);
    EXPECT_TRUE(std::isnan(sound("out.wav").at(delay, 0)));
    EXPECT_EQ(sound("out.wav").at(delay + 1, 1), INFINITY);
    EXPECT_EQ(sound("out.wav").at(delay + 2, 0), 0.25f);

    EXPECT_EQ(shell("cat in.wav | %lodex render /dev/stdin out.wav").code, 0); // of unknown length
    EXPECT_EQ(sound("out.wav").length(), frames);
    EXPECT_EQ(sound("out.wav").format & SF_FORMAT_TYPEMASK, SF_FORMAT_WAVEX);
}

TEST_F(Command, SaysWhatIsWrongAndLeavesNothingBehind)
{
    putSound("three.wav", 3, rate, std::vector<float>(300));
    folder.put("noise.txt", "this is no sound");
    folder.put("bad.txt", "at 0 play 1\nat 5 tempo fast\n");
    folder.put("link.txt", "at 9 set LINKTIMES 1\n");
    folder.put("base.txt", "at 9 timebase 1/8\n");
    folder.put("former.wav", "as it was");
    folder.put("cut.flac", "fLaC");
    std::filesystem::create_directory(folder.path / "sub");
    ASSERT_EQ(mkfifo((folder / "fifo").c_str(), 0600), 0); // as a device would be, which must not be replaced
    const auto before = folder.names();
    const struct
    {
        const char* arguments;
        const char* reason;
    } cases[] = {
        {"render nowhere.wav out.wav", "no such file: nowhere.wav"},
        {"render noise.txt former.wav", "cannot read noise.txt as audio: Format not recognised"},
        {"render cut.flac former.wav", "cannot read cut.flac"},
        {"render three.wav out.wav", "three.wav has 3 channels"},
        {"render in.wav nowhere/out.wav", "cannot write nowhere/out.wav: No such file or directory"},
        {"render in.wav fifo", "cannot write fifo: it is not a regular file"},
        {"render in.wav ''", "\"\" is not the name of a file"},
        {"render in.wav former.wav --gain nowhere/g.wav", "cannot write nowhere/g.wav"},
        {"render in.wav out.wav --plot sub/../out.wav", "OUT and --plot are the same file"},
        {"render in.wav out.wav --set FOO=1",
         "no parameter \"FOO\"; there are TRIGGERSENSE, ATTACKTIME, REL"},
        {"render in.wav out.wav --set ATTACKTIME=301",
         "ATTACKTIME takes a number from 0 to 300, not \"301\""},
        {"render in.wav out.wav --set STRENGTH=nan", "STRENGTH takes a number from 0 to 1, not \"nan\""},
        {"render in.wav out.wav --bpm 0", "--bpm takes a number from 1 to 1000"},
        {"render in.wav out.wav --ppq inf", "--ppq takes a number"},
        {"render in.wav out.wav --block 70000", "--block takes a whole number from 1 to 65536"},
        {"render in.wav out.wav --block 64,", "not \"\""},
        {"render in.wav out.wav --set STRENGTH", "--set takes ID=VALUE"},
        {"render in.wav out.wav --link yes", "--link takes on or off, not \"yes\""},
        {"render in.wav out.wav --timebase 1/3", "1 Bar D"},
        {"render in.wav former.wav --events bad.txt", "bad.txt:2: tempo takes a number from 1 to 1000"},
        {"render in.wav out.wav --events nowhere.txt", "cannot read nowhere.txt: No such file"},
        {"render in.wav out.wav --engine au", "no engine \"au\"; this build has effect, vst3"},
        {"render in.wav out.wav --engine vst3 --gain g.wav", "the engine \"vst3\" has no gain record"},
        {"render in.wav out.wav --engine vst3 --events link.txt", "hosts can't automate LINKTIMES"},
        {"render in.wav out.wav --engine vst3 --events base.txt", "can't change the time base on the way"},
        {"render in.wav", "OUT is required"},
        {"", "a command is missing"},
    };
    for (const auto& each : cases)
    {
        SCOPED_TRACE(each.arguments);
        const Result result = lodex(each.arguments);
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, StartsWith("lodex: "));
        EXPECT_THAT(result.err, HasSubstr(each.reason));
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
        EXPECT_EQ(folder.names(), before);
        EXPECT_EQ(folder.content("former.wav"), "as it was");
    }
}

TEST_F(Command, KeepsTheFormerFileWhenTheDiskIsFull)
{
    folder.put("former.wav", "as it was");
    const Result result = shell("ulimit -f 64; %lodex render in.wav former.wav");
    EXPECT_EQ(result.code, 2);
    EXPECT_THAT(result.err, StartsWith("lodex: cannot write former.wav: "));
    EXPECT_EQ(folder.content("former.wav"), "as it was");
    EXPECT_THAT(folder.names(), ElementsAre("former.wav", "in.wav"));
}

TEST_F(Command, StopsOnRequestAndLeavesNothingBehind)
{
    folder.put("former.wav", "as it was");
    // The input comes through a pipe, so that the signal falls in the middle of the work.
    const Result result = shell("mkfifo pipe\n"
                                "%lodex render pipe former.wav & lodex=$!\n"
                                "exec 3>pipe; trap '' PIPE; head -c 300000 in.wav >&3; kill -TERM $lodex\n"
                                "cat in.wav >&3; exec 3>&-; rm pipe; wait $lodex");
    EXPECT_EQ(result.code, 128 + SIGTERM);
    EXPECT_THAT(result.err, HasSubstr("lodex: interrupted, nothing was written\n"));
    EXPECT_EQ(folder.content("former.wav"), "as it was");
    EXPECT_THAT(folder.names(), ElementsAre("former.wav", "in.wav"));
}

TEST_F(Command, MeasuresItself)
{
    const Result result = lodex("bench --json");
    ASSERT_EQ(result.code, 0) << result.err;
    const auto figures = nlohmann::json::parse(result.out);
    EXPECT_GT(double(figures["effect_ns_per_frame"]), 0.0);
    EXPECT_GT(double(figures["copy_ns_per_frame"]), 0.0);
}
