// SPDX-License-Identifier: GPL-3.0-or-later
// Linked times while a host automates, a state is recalled and a user drags, each on a thread of its own.
#include "effect/instance/Player.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

namespace
{
// Does something again and again on another thread, as long as it lives.
class Meanwhile
{
public:
    explicit Meanwhile(std::function<void(int)> work)
        : thread(
              [this, work = std::move(work)]
              {
                  for (int i = 0; !stop; ++i, ++rounds)
                      work(i);
              })
    {
        while (rounds == 0)
            std::this_thread::yield();
    }
    ~Meanwhile()
    {
        stop = true;
        thread.join();
    }

private:
    std::atomic<bool> stop = false;
    std::atomic<long> rounds = 0;
    std::thread thread;
};

struct Session
{
    Player player{44100, 64};
    CQDT_DKS_Single& effect = player.effect;

    void write(const char* id, float value) { player.set(id, value); }
    float get(const char* id) { return player.get(id); }

    void setTimes(float attack, float hold, float release)
    {
        write("LINKTIMES", 0);
        write("ATTACKTIME", attack);
        write("HOLDTIME", hold);
        write("RELEASTIME", release);
        write("LINKTIMES", 1);
    }

    std::string state(float attack, float hold, float release)
    {
        setTimes(attack, hold, release);
        char* chunk = nullptr;
        const long size = effect.getDataChunk(&chunk);
        return {chunk, size_t(size)};
    }

    // A block at another tempo than the last.
    void block(int i)
    {
        player.tempo = 100.0 + i % 50;
        player.play(32);
        player.left.clear();
        player.right.clear();
        player.gain.clear();
    }
};
}

TEST(TimeLinker, ARecalledStateHoldsWhateverIsAutomated)
{
    using Work = std::function<void(Session&, int)>;
    const std::pair<const char*, Work> automations[] = {
        {"strength", [](Session& on, int i) { on.write("STRENGTH", float(i % 100) / 100.0f); }},
        {"curve", [](Session& on, int i) { on.write("ATTACKCRUVE", float(i % 8)); }},
        {"attack, to what it is", [](Session& on, int) { on.write("ATTACKTIME", 30.0f); }},
        {"tempo", [](Session& on, int i) { on.block(i); }},
    };
    for (const auto& [name, work] : automations)
    {
        SCOPED_TRACE(name);
        Session session;
        const float holds[] = {20.0f, 120.0f}, releases[] = {450.0f, 300.0f};
        std::string states[] = {session.state(30.0f, holds[0], releases[0]),
                                session.state(30.0f, holds[1], releases[1])};
        session.effect.setDataChunk(states[0].data(), long(states[0].size()));
        const Meanwhile automation([&session, &run = work](int i) { run(session, i); });
        for (int i = 0; i < 4000; ++i)
        {
            std::string chunk = states[i % 2];
            session.effect.setDataChunk(chunk.data(), long(chunk.size()));
            // The state's own values are in force, also if the automated attack came in the middle of it.
            ASSERT_EQ(session.get("RELEASTIME"), releases[i % 2]) << i;
            ASSERT_EQ(session.get("HOLDTIME"), holds[i % 2]) << i;
        }
    }
}

TEST(TimeLinker, ADragIsNotOverwrittenWhileOthersMove)
{
    Session session;
    session.setTimes(30.0f, 100.0f, 300.0f);
    const Meanwhile blocks([&](int i) { session.block(i); });
    for (int i = 0; i < 20000; ++i)
    {
        const float wanted = 100.0f + float(i % 300);
        session.write("RELEASTIME", wanted);
        ASSERT_EQ(session.get("RELEASTIME"), wanted);
    }
}

TEST(TimeLinker, EveryChangeOfTwoThreadsIsTakenUpOnce)
{
    Session session;
    session.setTimes(50.0f, 100.0f, 400.0f); // whole numbers: sums are exact
    {
        const Meanwhile attack([&](int i) { session.write("ATTACKTIME", float(20 + i % 60)); });
        for (int i = 0; i < 20000; ++i)
            session.write("ATTACKTIME", float(30 + i % 37));
    }
    EXPECT_EQ(session.get("ATTACKTIME") + session.get("HOLDTIME"), 150.0f);
    EXPECT_EQ(session.get("RELEASTIME"), 400.0f);

    session.write("HOLDTIME", 110.0f);
    EXPECT_EQ(session.get("HOLDTIME") + session.get("RELEASTIME"),
              400.0f + 150.0f - session.get("ATTACKTIME"));
}

TEST(TimeLinker, TwoWritersOfAParameterLeaveEffectAndParameterAlike)
{
    Session session;
    session.player.play(64);
    for (int i = 0; i < 2000; ++i)
    {
        std::thread other([&] { session.write("CLICKFILTER", 0.0f), session.write("BYPASS", 1.0f); });
        session.write("CLICKFILTER", 1.0f);
        session.write("BYPASS", 0.0f);
        other.join();
        ASSERT_EQ(session.effect.getBypass(), session.get("BYPASS") == 1.0f);
    }
}
