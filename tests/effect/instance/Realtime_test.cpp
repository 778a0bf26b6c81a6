// SPDX-License-Identifier: GPL-3.0-or-later
// What runs under processAudio in a block of the announced size neither allocates, nor locks, nor calls
// the system.
#include "effect/instance/Player.h"
#include "support/Realtime.h"

#include <gtest/gtest.h>
#include <mutex>
#include <unistd.h>

// An adapter's block: timed values of every automatable parameter, pieces, a new tempo, all states.
struct Session
{
    CQDT_DKS_Single effect{nullptr};
    std::vector<float> samples = std::vector<float>(4 * 512, 0.25f);
    double ppq = 0.0;

    Session()
    {
        effect.setSampleRate(44100.0f);
        effect.setBlockSize(512);
        effect.reset();
    }

    void run(int blocks)
    {
        float* channels[] = {&samples[0], &samples[512], &samples[1024], &samples[1536]};
        for (int block = 0; block < blocks; ++block)
        {
            Orbel::AudioBusInformation info(channels, 1, channels + 2, 1, 512);
            info.timeInfo.tempo = 90.0f + float(block % 60);
            info.timeInfo.playing = block % 37 != 0;
            info.timeInfo.ppqPosition = ppq += 0.02;
            for (int i = 0; i < effect.getParameterCount(); ++i)
                effect.addSyncParameterSetEvent(effect.getParameterProperty(i),
                                                float((block * 13 + i * 29) % 100) / 99.0f, i * 50);
            Orbel::BlockRoad(effect, Player::rules).process(info, 44100.0);
        }
    }
};

TEST(Realtime, TheAudioPathNeitherAllocatesNorLocks)
{
    Session session;
    const RealtimeWindow window;
    session.run(1000);
    EXPECT_EQ(window.allocations(), 0);
    EXPECT_EQ(window.locks(), 0);
}

TEST(Realtime, TheAudioPathMakesNoSystemCall)
{
    Session session;
    EXPECT_TRUE(makesNoSystemCall([] {}, [&] { session.run(1000); }));
}

TEST(Realtime, TheWatchSeesWhatItIsThereFor)
{
    std::mutex mutex;
    {
        const RealtimeWindow window;
        std::vector<int> memory(100);
        EXPECT_EQ(window.allocations(), 1);
        const std::lock_guard lock(mutex);
        EXPECT_EQ(window.locks(), 1);
    }
    EXPECT_FALSE(makesNoSystemCall([] {}, [] { usleep(1); }));
}
