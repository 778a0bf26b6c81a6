#include "tools/Renderer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using namespace lodex;
using testing::ElementsAre;

namespace
{
// Writes down what it is asked, and gives back half of what it gets.
class RecordingEngine : public RenderEngine
{
public:
    const std::vector<ParameterInfo>& parameters() const override { return infos; }
    void prepare(int, int) override {}
    void setTimeBase(float beats) override { note() << "timebase " << beats; }
    void set(ParameterValue) override {}
    void loadPreset(const std::string&, PresetType) override {}
    void reset() override {}
    void queueSet(ParameterValue value, int offset) override
    {
        note() << "set " << value.parameter << '=' << value.value << " at +" << offset;
    }
    void process(RenderBlock& block) override
    {
        const Transport& transport = block.transport;
        note() << block.first << '+' << block.frames << " ppq " << transport.ppq << " tempo "
               << transport.tempo << (transport.playing ? "" : " stopped");
        for (int i = 0; i < block.frames; ++i)
            for (int channel = 0; channel < 2; ++channel)
                block.output[channel][i] = block.input[channel][i] / 2.0f;
    }
    std::vector<std::string> log() const
    {
        std::vector<std::string> lines;
        for (const auto& line : notes)
            lines.push_back(line.str());
        return lines;
    }

private:
    std::ostringstream& note() { return notes.emplace_back(); }

    std::vector<ParameterInfo> infos;
    std::vector<std::ostringstream> notes;
};

struct Render
{
    explicit Render(int total, std::vector<int> sizes, const std::vector<Event>& events)
    {
        Renderer renderer(engine, 100, {60.0}, std::move(sizes), events); // 100 frames a beat
        int given = 0;
        renderer.run(
            [&](float* toLeft, float* toRight, int frames)
            {
                const int count = std::min(frames, total - given);
                for (int i = 0; i < count; ++i, ++given)
                {
                    toLeft[i] = float(given);
                    toRight[i] = float(-given);
                }
                return count;
            },
            [&](const RenderBlock& block)
            {
                left.insert(left.end(), block.output[0], block.output[0] + block.frames);
                right.insert(right.end(), block.output[1], block.output[1] + block.frames);
            });
    }

    RecordingEngine engine;
    std::vector<float> left, right;
};

using Kind = Event::Kind;
}

TEST(Renderer, TakesTheBlockSizesInTurnAndEndsWithTheInput)
{
    const Render render(130, {50, 25}, {});
    EXPECT_THAT(render.engine.log(), ElementsAre("0+50 ppq 0 tempo 60", "50+25 ppq 0.5 tempo 60",
                                                 "75+50 ppq 0.75 tempo 60", "125+5 ppq 1.25 tempo 60"));
    ASSERT_EQ(render.left.size(), 130u);
    for (int i = 0; i < 130; ++i)
    {
        EXPECT_EQ(render.left[size_t(i)], float(i) / 2.0f);
        EXPECT_EQ(render.right[size_t(i)], float(-i) / 2.0f);
    }
}

TEST(Renderer, RendersNothingFromNothing)
{
    const Render render(0, {64}, {{0, Kind::set, 0, 1.0}});
    EXPECT_THAT(render.engine.log(), ElementsAre());
}

TEST(Renderer, EndsABlockBeforeATransportEventAndCountsItAsOneOfTheList)
{
    const std::vector<Event> events = {
        {0, Kind::ppq, 0, 4.0},        {30, Kind::tempo, 0, 120.0}, {80, Kind::play, 0, 0.0},
        {80, Kind::timeBase, 0, 0.25}, {130, Kind::play, 0, 1.0},   {130, Kind::ppq, 0, -1.0},
        {999, Kind::tempo, 0, 30.0}, // beyond the end
    };
    const Render render(200, {50, 25}, events);
    EXPECT_THAT(render.engine.log(),
                ElementsAre("0+30 ppq 4 tempo 60", "30+25 ppq 4.3 tempo 120", "55+25 ppq 4.8 tempo 120",
                            "timebase 0.25", "80+25 ppq 5.3 tempo 120 stopped",
                            "105+25 ppq 5.3 tempo 120 stopped", "130+25 ppq -1 tempo 120",
                            "155+45 ppq -0.5 tempo 120"));
}

TEST(Renderer, HandsEachSetToTheBlockItFallsInto)
{
    const std::vector<Event> events = {
        {0, Kind::set, 1, 0.5},     {49, Kind::set, 2, 0.25}, {50, Kind::set, 1, 0.75},
        {60, Kind::set, 1, 1.0},    {70, Kind::set, 3, 2.0},  {70, Kind::play, 0, 0.0},
        {110, Kind::set, 1, 0.125}, {120, Kind::set, 1, 9.0},
    };
    const Render render(115, {50}, events);
    EXPECT_THAT(render.engine.log(),
                ElementsAre("set 1=0.5 at +0", "set 2=0.25 at +49", "0+50 ppq 0 tempo 60", "set 1=0.75 at +0",
                            "set 1=1 at +10", "50+20 ppq 0.5 tempo 60", "set 3=2 at +0", "set 1=0.125 at +40",
                            "70+45 ppq 0.7 tempo 60 stopped"));
}

TEST(Renderer, StaysOnTheBeatOverAnHour)
{
    Transport transport{128.0};
    for (int i = 0; i < 3600 * 48000 / 512; ++i)
        transport.advance(512, 48000);
    EXPECT_NEAR(transport.ppq, 60 * 128, 1e-6); // a hundredth of a sample at that rate is 4e-7 beats
}
