// SPDX-License-Identifier: GPL-3.0-or-later
// What a host's audio thread may expect of the built bundle.
#include "hosts/BundleHost.h"
#include "support/Realtime.h"

#include <gtest/gtest.h>

static void play(BundleHost& host, int blocks)
{
    for (int i = 0; i < blocks; ++i)
    {
        for (Steinberg::Vst::ParamID id = 0; id < 10; ++id)
            host.changes.add(id, 9 * int(id), i % 2 ? 0.3 : 0.6);
        host.process(i % 3 == 0 ? 256 : 100);
        host.flush();
    }
}

TEST(VST3Realtime, ABlockNeitherAllocatesNorLocksNorCallsTheSystem)
{
    const lodex::VST3Module module(LODEX_BUNDLE);
    BundleHost host(module);
    ASSERT_TRUE(host.setUp(44100.0, 256));
    play(host, 10);
    {
        const RealtimeWindow window;
        play(host, 1000);
        EXPECT_EQ(window.allocations(), 0);
        EXPECT_EQ(window.locks(), 0);
    }
    EXPECT_TRUE(makesNoSystemCall([] {}, [&] { play(host, 100); }));
}
