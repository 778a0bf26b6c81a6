// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/platform/x11/frame/X11Frame.h"
#include "Tovrane/views/tree/CFrame.h"
#include "windows/HostWindow.h"

#include <gmock/gmock.h>

using namespace Tovra;

// On a screen of 16 bits whose server offers nothing else: script/test_windows --depth 16 --plain.
TEST(DISABLED_PoorScreen, GetsNoWindowAndIsToldWhyOnce)
{
    HostWindow host;
    useX11Frames();
    testing::internal::CaptureStderr();
    for (int turn = 0; turn < 2; ++turn)
    {
        const auto frame =
            Kept<CFrame>::adopt(new CFrame(CRect(0.0, 0.0, 30.0, 20.0), host.parent(), nullptr));
        EXPECT_NE(HeadlessFrame::of(*frame.get()), nullptr);
        frame->close();
    }
    IFrame::setPlatformFactory(nullptr);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::MatchesRegex("Cannot show the plug-in's window: [^\n]+\n"));
}
