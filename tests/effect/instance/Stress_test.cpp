// SPDX-License-Identifier: GPL-3.0-or-later
// Three threads on one effect, as a host, its automation and its window are: meant for the thread
// sanitizers, and for the promise that nobody is called once he has been forgotten.
#include "effect/instance/Player.h"

#include <atomic>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>

// Dies right after its ForgetListener: a call after that is a use after free.
struct Listener : Orbel::ParameterChangeListener
{
    void parameterChanged(Orbel::ParameterProperty*) override { ++calls; }
    std::atomic<long> calls = 0;
};

TEST(Stress, AutomationAudioAndListenersRunBesideEachOther)
{
    Player player(44100, 256);
    std::atomic<bool> stop = false;

    std::thread automation(
        [&]
        {
            for (int i = 0; !stop; ++i)
                for (int id = 0; id < 15; ++id)
                {
                    Orbel::ParameterProperty* property = player.effect.getParameterPropertyByID(id);
                    property->setValue_Normalized(float((i * 7 + id * 3) % 101) / 100.0f);
                }
        });
    std::thread window(
        [&]
        {
            char text[256];
            for (int i = 0; !stop; ++i)
            {
                Orbel::ParameterProperty* property = player.effect.getParameterPropertyByID(i % 15);
                auto listener = std::make_unique<Listener>();
                property->AddListener(listener.get(), true);
                property->getStringFromValue(property->getCurrentValue(), text, 1);
                player.effect.setTimeAdjust(float(i % 4 + 1) / 2.0f);
                property->ForgetListener(listener.get());
                if (i % 16 == 0)
                    std::this_thread::yield();
            }
        });
    for (int block = 0; block < 3000; ++block)
    {
        player.tempo = block % 3 ? 120.0 : 121.0 + block % 50;
        player.play(64 + block % 192);
        for (const float sample : player.left)
            EXPECT_TRUE(std::isfinite(sample));
        player.left.clear();
        player.right.clear();
        player.gain.clear();
    }
    stop = true;
    automation.join();
    window.join();
}
