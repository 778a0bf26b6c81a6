// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/frame/X11TopLevel.h"
#include "windows/WindowTest.h"

using namespace Tovra;

TEST_F(WindowTest, AToolsWindowHoldsAFrameAndTellsThatItIsToClose)
{
    auto tool = X11TopLevel::open("T\xc3\xa4st", width, height);
    ASSERT_NE(tool, nullptr);
    host->command("destroy"); // nothing lies over the tool's window, which is at the screen's corner
    auto* inside = new CFrame(CRect(0.0, 0.0, width, height), tool->parent(), nullptr);
    inside->addView(new UserView(log, inside->getViewSize()));
    inside->idle();
    EXPECT_TRUE(until([this] { return pixel(10 - left, 10 - top) == 0xff0000; }));
    EXPECT_EQ(pixel(width - 1 - left, height - 1 - top), 0x0000ffu);

    EXPECT_TRUE(tool->isOpen());
    bool isClosed = false;
    tool->onClose = [&]
    {
        inside->close();
        inside->forget();
        isClosed = true;
        tool.reset();
    };
    const auto number = xcb_window_t(reinterpret_cast<std::uintptr_t>(tool->parent()));
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = number;
    message.type = observer->atom(X11Atom::wmProtocols);
    message.data.data32[0] = observer->atom(X11Atom::wmDeleteWindow);
    xcb_send_event(observer->xcb(), 0, number, 0, reinterpret_cast<const char*>(&message));
    observer->flush();
    EXPECT_TRUE(until([&] { return isClosed; }));
    EXPECT_FALSE(observer->exists(number));
}
