#include "Tovrane/PollRunLoop.h"

#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <unistd.h>

using namespace Tovra;

namespace
{
// A pipe with something to read in it.
class ADescriptorWatch : public testing::Test
{
protected:
    ADescriptorWatch()
    {
        EXPECT_EQ(pipe(ends.data()), 0);
        EXPECT_EQ(write(ends[1], "x", 1), 1);
    }
    ~ADescriptorWatch() override
    {
        watch.stop();
        close(ends[0]);
        close(ends[1]);
    }
    // How often a loop calls in one round.
    int callsOf(PollRunLoop& loop)
    {
        calls = 0;
        loop.runOnce(0);
        return calls;
    }

    std::array<int, 2> ends;
    DescriptorWatch watch;
    int calls = 0;
};
}

TEST_F(ADescriptorWatch, GoesWithTheCurrentLoop)
{
    watch.start(ends[0], [this] { ++calls; }); // before there is a loop
    PollRunLoop outer;
    EXPECT_EQ(callsOf(outer), 0);
    RunLoop::enter(outer);
    EXPECT_EQ(callsOf(outer), 1);
    {
        PollRunLoop inner;
        RunLoop::enter(inner);
        EXPECT_EQ(callsOf(inner), 1);
        EXPECT_EQ(callsOf(outer), 0);
    }
    EXPECT_EQ(callsOf(outer), 1);
    watch.stop();
    EXPECT_EQ(callsOf(outer), 0);
    watch.start(ends[0], [this] { watch.stop(), ++calls; });
    EXPECT_EQ(callsOf(outer), 1);
    EXPECT_EQ(callsOf(outer), 0);
}

TEST_F(ADescriptorWatch, OutlivesItsLoop)
{
    auto loop = std::make_unique<PollRunLoop>();
    RunLoop::enter(*loop);
    watch.start(ends[0], [this] { ++calls; });
    loop.reset();
    watch.stop();
    PollRunLoop next;
    RunLoop::enter(next);
    watch.start(ends[0], [this] { ++calls; });
    EXPECT_EQ(callsOf(next), 1);
}
